// What a control stores with its container: named values, and the mark that one of
// them has changed. A value equal to its default need not stand in the bag.
#pragma once
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <variant>

class PropertyBag {
public:
    using Value = std::variant<int32_t, bool, std::string>;

    void WriteProperty(const std::string& name, Value value, const Value& defaultValue);

    // The stored value; `defaultValue` if the name is not stored. Nothing if what
    // is stored is of another type: the step that asked has failed.
    std::optional<Value> ReadProperty(const std::string& name, const Value& defaultValue) const;

    bool Holds(const std::string& name) const { return values_.contains(name); }

private:
    std::map<std::string, Value> values_;
};
