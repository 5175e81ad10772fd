// The copy walks the source as a recursion would, in the same order (which decides what becomes of
// keys that fall together), but keeps the places it has reached in a list. A destination node is
// only appended to while no copy into one of its own elements is under way, so the list may hold
// pointers to nodes.

#include "host/json/hxlower.h"

#include "host/text/asciicase.h"

namespace hxJson {

namespace {

struct Place {
    ValueConstIterator next;
    ValueConstIterator end;
    bool isObject;
    Value* destination;
};

bool IsContainer(const Value& value) {
    return value.isArray() || value.isObject();
}

// Where the element goes: a member of the lowered name, or a new last element.
Value& TargetOf(const Place& place) {
    if (!place.isObject) return place.destination->append(Value());
    std::string name = place.next.memberName();
    ToLowerInPlace(name);
    return (*place.destination)[name];
}

}  // namespace

void CopyWithLowerKeys(const Value& source, Value& destination) {
    if (!IsContainer(source)) return;
    std::vector<Place> open;
    open.push_back({source.begin(), source.end(), source.isObject(), &destination});
    while (!open.empty()) {
        Place& place = open.back();
        if (place.next == place.end) {
            open.pop_back();
            continue;
        }
        const Value& element = *place.next;
        Value& target = TargetOf(place);
        ++place.next;
        if (IsContainer(element)) {
            open.push_back({element.begin(), element.end(), element.isObject(), &target});
        } else {
            target = element;
        }
    }
}

}  // namespace hxJson
