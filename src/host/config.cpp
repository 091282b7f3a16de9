#include "host/config.h"

#include <fmt/format.h>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <toml++/toml.h>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <fstream>
#include <sstream>

#include "host/config_keys.h"

namespace tarlo::host {

namespace {

constexpr std::string_view kApplication = "application";

// Milliseconds in one unit of a duration key.
double unitOf(const ConfigKey& key) {
  if (key.name.ends_with("_days")) return 24 * 3'600'000;
  return key.name.ends_with("_minutes") ? 60'000 : 1'000;
}

[[noreturn]] void fail(std::string_view file, const toml::node& node, std::string_view key,
                       std::string_view what) {
  throw ConfigError(fmt::format("{}, line {}: {} {}", file, node.source().begin.line, key, what));
}

std::string fullName(const ConfigKey& key) {
  return fmt::format("{}.{}", key.section, key.name);
}

// The part of the configuration that a key's member belongs to.
template <class Owner, class AnyConfig>
Owner& ownerIn(AnyConfig& config) {
  if constexpr (std::is_same_v<std::remove_const_t<Owner>, WireLimits>) {
    return config.limits;
  } else {
    return config;
  }
}

class Reader {
 public:
  Reader(Config& config, std::string_view file) : config_(config), file_(file) {}

  void read(const ConfigKey& key, const toml::node& node) {
    std::visit([&](auto member) { assign(key, member, node); }, key.field);
  }

  void readApplication(const toml::node& node) {
    const toml::table* table = node.as_table();
    if (table == nullptr) fail(file_, node, kApplication, "must be a table of texts");
    for (const auto& [name, value] : *table) {
      const auto text = value.value_exact<std::string>();
      if (!text) fail(file_, value, name.str(), "must be a text");
      config_.application[std::string(name.str())] = *text;
    }
  }

 private:
  template <class Owner, class Value>
  void assign(const ConfigKey& key, Value Owner::*member, const toml::node& node) {
    Value& target = ownerIn<Owner>(config_).*member;
    if constexpr (std::is_same_v<Value, std::string>) {
      target = take<std::string>(key, node, "must be a text");
    } else if constexpr (std::is_same_v<Value, bool>) {
      target = take<bool>(key, node, "must be true or false");
    } else if constexpr (std::is_same_v<Value, std::vector<std::string>>) {
      target = texts(key, node);
    } else if constexpr (std::is_same_v<Value, Milliseconds>) {
      target = Milliseconds(std::llround(number(key, node) * unitOf(key)));
    } else {
      target = static_cast<Value>(wholeNumber(key, node));
    }
  }

  template <class T>
  T take(const ConfigKey& key, const toml::node& node, std::string_view what) {
    const auto value = node.value_exact<T>();
    if (!value) fail(file_, node, fullName(key), what);
    return *value;
  }

  double number(const ConfigKey& key, const toml::node& node) {
    const auto value = node.is_number() ? node.value<double>() : std::nullopt;
    // Written so that what is no number at all is refused as well.
    if (!value || !(*value >= key.least && *value <= key.greatest)) {
      fail(file_, node, fullName(key),
           fmt::format("must be a number from {} to {}", key.least, key.greatest));
    }
    return *value;
  }

  double wholeNumber(const ConfigKey& key, const toml::node& node) {
    const double value = number(key, node);
    if (value != std::floor(value)) fail(file_, node, fullName(key), "must be a whole number");
    return value;
  }

  std::vector<std::string> texts(const ConfigKey& key, const toml::node& node) {
    std::vector<std::string> list;
    const toml::array* array = node.as_array();
    if (array == nullptr) fail(file_, node, fullName(key), "must be a list of texts");
    for (const auto& item : *array)
      list.push_back(take<std::string>(key, item, "must be a list of texts"));
    return list;
  }

  Config& config_;
  std::string_view file_;
};

const ConfigKey* findKey(std::string_view section, std::string_view name) {
  for (const auto& key : configKeys()) {
    if (key.section == section && key.name == name) return &key;
  }
  return nullptr;
}

void readSection(Reader& reader, std::string_view file, std::string_view section,
                 const toml::table& table) {
  for (const auto& [name, node] : table) {
    const ConfigKey* key = findKey(section, name.str());
    if (key == nullptr)
      fail(file, node, fmt::format("{}.{}", section, name.str()),
           "is not a key of the configuration");
    reader.read(*key, node);
  }
}

void check(const Config& config, std::string_view file) {
  const auto refuse = [&](std::string_view what) {
    throw ConfigError(fmt::format("{}: {}", file, what));
  };
  if (config.limits.running + config.limits.signIns >= config.limits.threads)
    refuse("server.running and server.sign_ins together must be less than server.threads");
  if (config.tlsCertificate.empty() != config.tlsKey.empty())
    refuse("tls.certificate and tls.key go together");
  if (config.charset != "gb2312" && config.charset != "utf-8")
    refuse("pages.charset must be gb2312 or utf-8");
  if (!config.trustedHeader.empty() && config.trustedAddresses.empty()) {
    refuse("sign_in.trusted_header needs sign_in.trusted_addresses");
  }
  static constexpr std::string_view kLevels[] = {"debug", "info", "warning", "error"};
  if (std::ranges::find(kLevels, config.logLevel) == std::end(kLevels))
    refuse("log.level must be debug, info, warning or error");
  if (!config.startPage.starts_with('/')) refuse("pages.start_page must begin with /");
  parseEndpoint(config.listen, fmt::format("{}: server.listen", file));
}

// Of this family or that; names are not looked up.
bool isAddress(const std::string& text) {
  in6_addr room{};
  const std::string withoutZone = text.substr(0, text.find('%'));
  return ::inet_pton(AF_INET, text.c_str(), &room) == 1 ||
         ::inet_pton(AF_INET6, withoutZone.c_str(), &room) == 1;
}

std::string tomlText(std::string_view text) {
  std::ostringstream out;
  out << toml::value<std::string>(std::string(text));
  return out.str();
}

template <class Owner, class Value>
std::string printed(const Config& config, const ConfigKey& key, Value Owner::*member) {
  const Value& value = ownerIn<const Owner>(config).*member;
  if constexpr (std::is_same_v<Value, std::string>) {
    return tomlText(value);
  } else if constexpr (std::is_same_v<Value, std::vector<std::string>>) {
    std::string list;
    for (const auto& item : value) list += (list.empty() ? "" : ", ") + tomlText(item);
    return "[" + list + "]";
  } else if constexpr (std::is_same_v<Value, Milliseconds>) {
    return fmt::format("{}", static_cast<double>(value.count()) / unitOf(key));
  } else {
    return fmt::format("{}", value);
  }
}

}  // namespace

Config parseConfig(std::string_view text, std::string_view name) {
  Config config;
  toml::table root;
  try {
    root = toml::parse(text, name);
  } catch (const toml::parse_error& error) {
    throw ConfigError(
        fmt::format("{}, line {}: {}", name, error.source().begin.line, error.description()));
  }
  Reader reader(config, name);
  for (const auto& [section, node] : root) {
    if (section.str() == kApplication) {
      reader.readApplication(node);
    } else if (const toml::table* table = node.as_table()) {
      readSection(reader, name, section.str(), *table);
    } else {
      fail(name, node, section.str(), "stands outside of a section");
    }
  }
  check(config, name);
  return config;
}

Config loadConfig(const std::string& file) {
  std::ifstream in(file, std::ios::binary);
  if (!in) throw ConfigError(fmt::format("{}: cannot be read", file));
  std::ostringstream text;
  text << in.rdbuf();
  return parseConfig(text.str(), file);
}

std::string printConfig(const Config& config) {
  std::string text;
  std::string_view section;
  for (const auto& key : configKeys()) {
    if (key.section != section) {
      text += fmt::format("{}[{}]\n", text.empty() ? "" : "\n", key.section);
      section = key.section;
    }
    text += fmt::format(
        "# {}\n{} = {}\n", key.meaning, key.name,
        std::visit([&](auto member) { return printed(config, key, member); }, key.field));
  }
  text += "\n[application]\n# Further values for pages, by name.\n";
  for (const auto& [name, value] : config.application)
    text += fmt::format("{} = {}\n", tomlText(name), tomlText(value));
  return text;
}

Endpoint parseEndpoint(std::string_view text, std::string_view name) {
  const auto colon = text.rfind(':');
  Endpoint endpoint;
  if (colon != std::string_view::npos) {
    std::string_view address = text.substr(0, colon);
    if (address.starts_with('[') && address.ends_with(']'))
      address = address.substr(1, address.size() - 2);
    endpoint.address = address == "localhost" ? "127.0.0.1" : std::string(address);
    const std::string_view port = text.substr(colon + 1);
    const auto [end, error] =
        std::from_chars(port.data(), port.data() + port.size(), endpoint.port);
    if (error == std::errc() && end == port.data() + port.size() && isAddress(endpoint.address))
      return endpoint;
  }
  throw ConfigError(
      fmt::format("{}: \"{}\" is not an address and a port, such as 127.0.0.1:8080", name, text));
}

bool Endpoint::isLoopback() const {
  return address.starts_with("127.") || address == "::1";
}

}  // namespace tarlo::host
