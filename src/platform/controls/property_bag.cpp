// Named values. Equal to the default means not stored.
#include "platform/controls/property_bag.h"

#include <utility>

void PropertyBag::WriteProperty(const std::string& name, Value value, const Value& defaultValue) {
    if (value == defaultValue)
        values_.erase(name);
    else
        values_.insert_or_assign(name, std::move(value));
}

std::optional<PropertyBag::Value> PropertyBag::ReadProperty(const std::string& name, const Value& defaultValue) const {
    const auto found = values_.find(name);
    if (found == values_.end()) return defaultValue;
    if (found->second.index() != defaultValue.index()) return std::nullopt;
    return found->second;
}
