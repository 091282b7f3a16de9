#pragma once
// A page context in memory: for tests, the command line and programs that call operations without a
// web server. Its statements may touch everything but the server's own tables; an operation called
// through the component is held to its own rights here too.

#include <functional>
#include <map>
#include <string>

#include "frame/page.h"
#include "text/fold.h"

namespace tarlo::frame {

using text::NoCaseLess;
// Values by key without regard to case.
using ValueMap = std::map<std::string, Variant, NoCaseLess>;

class LocalPage {
 public:
  // `Application("strConn")` is set to the connection string.
  LocalPage(database::Registry& databases, std::string_view connectionString);
  ~LocalPage();

  // The context for operations. Valid as long as this object.
  Page& page();

  // Plain maps: set what a test or a caller wants before the operation runs.
  ValueMap& request();
  ValueMap& serverVariables();
  ValueMap& session();
  ValueMap& application();
  // Makes Server.CreateObject(progId) call the factory.
  void registerObject(std::string progId, std::function<std::shared_ptr<Object>()> factory);

  const std::string& written() const;  // the page text so far
  const std::map<std::string, std::string>& headers() const;

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace tarlo::frame
