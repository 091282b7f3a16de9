#pragma once
// The server's certificate and key. A loaded pair does not change: a new one is for the connections
// that come after it.

#include <memory>
#include <stdexcept>
#include <string>

namespace boost::asio::ssl {
class context;
}

namespace tarlo::host {

// PEM files: the certificate with those that vouch for it behind it, and its key. Both empty: no
// TLS.
struct TlsFiles {
  std::string certificate, key;
};

// A message for people that names the key of the configuration and the file.
class TlsError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

using TlsContext = std::shared_ptr<boost::asio::ssl::context>;

// TLS 1.2 or later. Nothing for no files; throws TlsError for files that are missing, unreadable or
// no pair.
TlsContext loadTls(const TlsFiles& files);

}  // namespace tarlo::host
