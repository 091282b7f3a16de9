#include "host/wire/tls.h"

#include <fmt/format.h>
#include <openssl/err.h>
#include <openssl/ssl.h>
#include <openssl/x509err.h>

#include <boost/asio/ssl/context.hpp>
#include <fstream>

namespace tarlo::host {

namespace ssl = boost::asio::ssl;
using boost::system::error_code;

namespace {

constexpr std::string_view kCertificate = "tls.certificate";
constexpr std::string_view kKey = "tls.key";

[[noreturn]] void fail(std::string_view name, const std::string& file, std::string_view reason) {
  throw TlsError(fmt::format("{}: {}: {}", name, file, reason));
}

// OpenSSL's words for a missing file name its own functions.
void checkReadable(std::string_view name, const std::string& file) {
  std::ifstream in(file, std::ios::binary);
  if (!in || in.peek() == std::ifstream::traits_type::eof()) fail(name, file, "cannot be read");
}

bool isMismatch(const error_code& error) {
  return ERR_GET_LIB(static_cast<unsigned long>(error.value())) == ERR_LIB_X509 &&
         ERR_GET_REASON(static_cast<unsigned long>(error.value())) == X509_R_KEY_VALUES_MISMATCH;
}

void loadKey(ssl::context& context, const TlsFiles& files) {
  error_code error;
  // A key under a password would be asked for at a terminal that a server does not have.
  context.set_password_callback([](auto&&...) { return std::string(); }, error);
  context.use_private_key_file(files.key, ssl::context::pem, error);
  if (isMismatch(error) || (!error && SSL_CTX_check_private_key(context.native_handle()) != 1)) {
    fail(kKey, files.key,
         fmt::format("is not the key of {} ({})", files.certificate, kCertificate));
  }
  if (error) fail(kKey, files.key, fmt::format("no usable key in PEM ({})", error.message()));
}

}  // namespace

TlsContext loadTls(const TlsFiles& files) {
  if (files.certificate.empty() && files.key.empty()) return nullptr;
  if (files.key.empty()) throw TlsError("tls.certificate needs tls.key");
  if (files.certificate.empty()) throw TlsError("tls.key needs tls.certificate");
  checkReadable(kCertificate, files.certificate);
  checkReadable(kKey, files.key);
  auto context = std::make_shared<ssl::context>(ssl::context::tls_server);
  SSL_CTX_set_min_proto_version(context->native_handle(), TLS1_2_VERSION);
  SSL_CTX_set_options(context->native_handle(), SSL_OP_NO_RENEGOTIATION | SSL_OP_NO_COMPRESSION |
                                                    SSL_OP_CIPHER_SERVER_PREFERENCE);
  // An idle connection holds no buffers.
  SSL_CTX_set_mode(context->native_handle(), SSL_MODE_RELEASE_BUFFERS);
  error_code error;
  context->use_certificate_chain_file(files.certificate, error);
  if (error) {
    fail(kCertificate, files.certificate,
         fmt::format("no usable certificate in PEM ({})", error.message()));
  }
  loadKey(*context, files);
  return context;
}

}  // namespace tarlo::host
