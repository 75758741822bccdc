#pragma once

#include "platform/Settings.h"

#include <map>
#include <utility>
#include <variant>

namespace veltrano {

/// Settings in memory, exact in their types. Keeps the order in which keys were written.
class MapSettings final : public Settings {
public:
    using Value = std::variant<bool, std::int64_t, double, std::string, std::vector<std::string>>;

    std::optional<bool> boolForKey(std::string_view key) const override { return valueOf<bool>(key); }
    std::optional<std::int64_t> integerForKey(std::string_view key) const override {
        return valueOf<std::int64_t>(key);
    }
    std::optional<double> doubleForKey(std::string_view key) const override {
        if (const auto whole = valueOf<std::int64_t>(key))
            return static_cast<double>(*whole);
        return valueOf<double>(key);
    }
    std::optional<std::string> stringForKey(std::string_view key) const override {
        return valueOf<std::string>(key);
    }
    std::optional<std::vector<std::string>> arrayForKey(std::string_view key) const override {
        return valueOf<std::vector<std::string>>(key);
    }

    void setBool(std::string_view key, bool value) override { set(key, value); }
    void setInteger(std::string_view key, std::int64_t value) override { set(key, value); }
    void setDouble(std::string_view key, double value) override { set(key, value); }
    void setString(std::string_view key, std::string_view value) override { set(key, std::string(value)); }
    void setArray(std::string_view key, const std::vector<std::string>& value) override { set(key, value); }
    void remove(std::string_view key) override { values.erase(std::string(key)); }

    bool synchronize() override {
        ++synchronizations;
        return canSynchronize;
    }

    std::map<std::string, Value> values;
    std::vector<std::string> written; ///< Keys, in the order of writing.
    int synchronizations = 0;
    bool canSynchronize = true;

private:
    template <typename Type>
    std::optional<Type> valueOf(std::string_view key) const {
        const auto found = values.find(std::string(key));
        if (found == values.end() || !std::holds_alternative<Type>(found->second))
            return std::nullopt;
        return std::get<Type>(found->second);
    }
    void set(std::string_view key, Value value) {
        written.emplace_back(key);
        values[std::string(key)] = std::move(value);
    }
};

} // namespace veltrano
