#include "bridge/registry.h"

#include <fmt/format.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "text/fold.h"
#include "text/pieces.h"

namespace tarlo::bridge {
namespace {

using text::equalsNoCase;

[[noreturn]] void refuse(const std::string& file, std::string_view why) {
  throw RegistryError(fmt::format("{}: {}", file, why));
}

std::string textOf(const std::string& file) {
  std::ifstream stream(file, std::ios::binary);
  std::stringstream text;
  text << stream.rdbuf();
  return text.str();
}

bool isEntry(std::string_view line) {
  return !text::trim(line).empty() && line.front() != '#';
}

RegisteredClass entryOf(std::string_view line, const std::string& file, std::size_t number) {
  const auto parts = text::split(line, "\t");
  const bool isComplete = parts.size() == 3 && !parts[0].empty() && parts[1].starts_with('{') &&
                          parts[1].ends_with('}') && parts[2].starts_with('/');
  if (!isComplete) {
    refuse(file, fmt::format("line {}: expected a program id, a class id in braces and an absolute "
                             "path, separated by tabs",
                             number));
  }
  return {std::string(parts[0]), std::string(parts[1]), std::string(parts[2])};
}

void checkOwnership(const std::string& file) {
  struct stat info {};
  if (stat(file.c_str(), &info) != 0) return;
  if ((info.st_mode & (S_IWGRP | S_IWOTH)) != 0) {
    refuse(file, "group or others may write it");
  }
}

// The file's text without the class's line.
std::string textWithout(const std::string& file, std::string_view classId) {
  std::string kept;
  const std::string text = textOf(file);
  std::size_t number = 0;
  for (const std::string_view line : text::split(text, "\n")) {
    ++number;
    if (isEntry(line) && equalsNoCase(entryOf(line, file, number).classId, classId)) continue;
    if (!line.empty()) kept.append(line).append("\n");
  }
  return kept;
}

void replaceFile(const std::string& file, const std::string& text) {
  const std::string next = file + ".new";
  std::ofstream stream(next, std::ios::binary);
  stream << text;
  stream.close();
  std::error_code error;
  if (stream) std::filesystem::rename(next, file, error);
  if (!stream || error) refuse(file, "cannot be written");
}

}  // namespace

std::vector<RegisteredClass> readRegistry(const std::string& file) {
  checkOwnership(file);
  std::vector<RegisteredClass> entries;
  const std::string text = textOf(file);
  std::size_t number = 0;
  for (const std::string_view line : text::split(text, "\n")) {
    ++number;
    if (isEntry(line)) entries.push_back(entryOf(line, file, number));
  }
  return entries;
}

void addToRegistry(const std::string& file, const RegisteredClass& entry) {
  replaceFile(file, fmt::format("{}{}\t{}\t{}\n", textWithout(file, entry.classId), entry.progId,
                                entry.classId, entry.library));
}

void removeFromRegistry(const std::string& file, std::string_view classId) {
  if (std::filesystem::exists(file)) replaceFile(file, textWithout(file, classId));
}

}  // namespace tarlo::bridge
