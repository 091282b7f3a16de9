#pragma once
// A file that is either whole or not there: it is built under another name beside its place and
// moved there when it is complete.

#include <filesystem>
#include <string>

#include "app/interruption.h"

namespace tarlo::app {

class NewFile {
 public:
  // Makes the folder of `target` when it is missing, and removes what a process that is no more (it
  // was killed, or the power failed) left half made for the same place. Signals that end the
  // process wait as long as this lives. Throws CommandError (kNoDatabase).
  explicit NewFile(std::filesystem::path target);
  // Removes what was built, unless it was published.
  ~NewFile();
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  // Where to build it.
  const std::filesystem::path& path() const { return path_; }
  // Moves it to its place. Never replaces a file: throws CommandError (kAlreadyThere) when one has
  // come to stand there meanwhile, kNoDatabase when it cannot be moved.
  void publish();

 private:
  InterruptionDelay delay_;  // the first member: it outlives the removal
  std::filesystem::path target_;
  std::filesystem::path path_;
};

}  // namespace tarlo::app
