#pragma once
// The registry file: which classes may be created by name, and from which library. One class a
// line: program id, class id, absolute path of the library, separated by tabs. Blank lines and
// lines that begin with "#" mean nothing.

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace tarlo::bridge {

struct RegisteredClass {
  std::string progId;
  std::string classId;
  std::string library;
};

// A message for people: the file, the line and what is wrong.
class RegistryError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Nothing for a file that does not exist. Throws RegistryError for a line that is none, and for a
// file that others than its owner may write: who writes it chooses what code runs here.
std::vector<RegisteredClass> readRegistry(const std::string& file);

// Writes the class's line in the place of an older one of the same class id, or takes that out. The
// file is replaced in one step. Throw RegistryError.
void addToRegistry(const std::string& file, const RegisteredClass& entry);
void removeFromRegistry(const std::string& file, std::string_view classId);

}  // namespace tarlo::bridge
