#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace veltrano {

struct PropertyArray;
struct PropertyDictionary;

/// Bytes, as opposed to text.
struct PropertyData {
    std::string bytes;

    bool operator==(const PropertyData&) const = default;
};

/// One value of a property list; text is UTF-8. Containers are shared, so that one that is handed out can be
/// changed in its place.
using PropertyValue =
    std::variant<bool, std::int64_t, double, std::string, PropertyData, std::chrono::sys_seconds,
                 std::shared_ptr<PropertyArray>, std::shared_ptr<PropertyDictionary>>;

struct PropertyArray {
    std::vector<PropertyValue> values;
};

struct PropertyDictionary {
    std::map<std::string, PropertyValue, std::less<>> values; ///< Keys are UTF-8.
};

/// Containers inside each other, at most; more is taken for damage.
inline constexpr int kMostPropertyLevels = 256;

/// Reads a property list in XML whose root is a dictionary. Null for anything else, damaged text included.
[[nodiscard]] std::shared_ptr<PropertyDictionary> readPropertyList(std::string_view xml);

/// A dictionary as a property list in XML. Nothing where it holds what XML can't: text that is no UTF-8 or
/// has control characters, a missing container, too many levels.
[[nodiscard]] std::optional<std::string> writePropertyList(const PropertyDictionary& dictionary);

} // namespace veltrano
