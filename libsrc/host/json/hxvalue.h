#pragma once

// hxJson::Value is one JSON node: null, a number, a string, a boolean, an array of nodes or an
// object of named nodes. Parser definitions, rule documents and result documents are trees of them.
// It is a value: a copy is deep, and a node owns what is below it.
//
//     hxJson::Value rule;                    // null
//     rule["type"] = 3;                      // null becomes an object
//     rule["lines"].append("interface");     // null becomes an array
//     const hxJson::Value& read = rule;
//     read["absent"]["deeper"].asInt();      // 0: what is absent reads as null
//     rule.toString(false);                  // {"lines":["interface"],"type":3}
//
// Reading is lenient: no test, conversion or const access throws or fails; what does not fit gives
// a harmless value, as each operation says. Only running out of memory throws.
//
// Objects hold their members in the byte order of their keys. Copying, comparing, writing and
// destroying use no more stack for a deep tree than for a flat one.
//
// References: a node taken from an object stays where it is until that member is removed or the
// object itself replaced; a node taken from an array only until the array next grows. One thread at
// a time may use a node that anyone changes; const operations may run on many threads at once.

#include "host/runtime/tzexport.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace hxJson {

// The numbers are fixed: documents and callers name types by them.
enum ValueType {
    nullValue = 0,
    intValue = 1,  // an integer given as signed, or read from a text and fitting 64 bits signed
    uintValue =
        2,  // an integer given as unsigned, or read from a text and only fitting 64 bits unsigned
    realValue = 3,
    stringValue = 4,
    booleanValue = 5,
    arrayValue = 6,
    objectValue = 7
};

class ValueIterator;
class ValueConstIterator;

class TZPARSER_API Value {
public:
    using Members = std::map<std::string, Value, std::less<>>;
    using Elements = std::vector<Value>;

    // --- Making
    // ---------------------------------------------------------------------------------------------

    Value() noexcept : m_cachedText(nullptr), m_type(nullValue) { m_data.integer = 0; }
    // An empty node of the type: 0, "", false, no element. The flag has no meaning here.
    Value(ValueType type, bool flag = false);
    Value(const std::string& text);
    Value(std::string&& text);
    Value(std::string_view text);
    Value(const char* text);  // a null pointer gives a null node
    Value(int number) : Value(static_cast<long long>(number)) {}
    Value(long number) : Value(static_cast<long long>(number)) {}
    Value(long long number) noexcept;
    Value(unsigned number) : Value(static_cast<unsigned long long>(number)) {}
    Value(unsigned long number) : Value(static_cast<unsigned long long>(number)) {}
    Value(unsigned long long number) noexcept;
    Value(double number) noexcept;
    // A template, so that no pointer turns into a boolean.
    template <typename Bool, typename = std::enable_if_t<std::is_same_v<Bool, bool>>>
    Value(Bool truth) noexcept : Value() {
        m_type = booleanValue;
        m_data.integer = truth ? 1 : 0;
    }
    Value(const Value& other);
    Value(Value&& other) noexcept;  // leaves null behind
    ~Value();

    // Assigning anything a node is made from replaces what the node held. The right side may be a
    // part of the left one.
    Value& operator=(const Value& other);
    Value& operator=(Value&& other) noexcept;
    void swap(Value& other) noexcept;

    // --- Asking
    // ---------------------------------------------------------------------------------------------

    ValueType type() const noexcept { return static_cast<ValueType>(m_type); }
    bool isNull() const noexcept { return m_type == nullValue; }
    bool isBool() const noexcept { return m_type == booleanValue; }
    bool isString() const noexcept { return m_type == stringValue; }
    bool isArray() const noexcept { return m_type == arrayValue; }
    bool isObject() const noexcept { return m_type == objectValue; }
    bool isDouble() const noexcept { return m_type == realValue; }
    // An integer (never a real, a string or a boolean) that the C++ type holds: 32 bits signed, 64
    // bits signed, 64 bits unsigned.
    bool isInt() const noexcept;
    bool isInt64() const noexcept;
    bool isUInt64() const noexcept;
    // Any integer or real.
    bool isNumeric() const noexcept { return m_type >= intValue && m_type <= realValue; }

    // True for null and for an array or object without any element; false for all else, ""
    // included.
    bool empty() const noexcept;
    // The number of elements or members; 0 for all but arrays and objects.
    size_t size() const noexcept;

    // Integers are equal by value, signed or not; a real equals only a real, any NaN equals none;
    // the rest is equal by type and content.
    bool operator==(const Value& other) const;
    bool operator!=(const Value& other) const { return !(*this == other); }

    // --- Converting
    // -----------------------------------------------------------------------------------------

    // A number out of range gives the nearest number in range, a real loses its fraction, NaN gives
    // 0; a string gives the decimal number at its start, behind blanks, or 0; true gives 1; all
    // else 0.
    int asInt() const noexcept;
    long long asInt64() const noexcept;
    unsigned long long asUInt64() const noexcept;
    // As asInt, but with fractions and exponents: "2.5 ms" gives 2.5.
    double asDouble() const noexcept;
    // A number is true unless 0 (NaN is false); a string is true if it is "true" in any case or
    // starts with a number that is not 0; null, arrays and objects are false.
    bool asBool() const noexcept;
    // null "", booleans "true" or "false", integers their digits, reals the shortest text that
    // reads back as the same number ("1.0", "0.25"), arrays and objects their compact JSON text.
    // The latter lets a document hold another document as a text or as the object itself: both read
    // the same.
    std::string asString() const;
    // The text of asString, ended by a NUL (a string with a NUL inside reads as cut there). The
    // pointer is owned by the node and good until the node, or a node below it, changes.
    const char* asCString() const;
    // The text of a string node without a copy, good until the node changes; "" for all other
    // types.
    std::string_view stringView() const noexcept;

    // --- Members of an object
    // -------------------------------------------------------------------------------

    // The member, made as null if absent. A node that is no object becomes an empty object first,
    // losing what it held, as by an assignment. A null pointer counts as "".
    Value& operator[](const char* name);
    Value& operator[](const std::string& name);
    Value& operator[](std::string_view name);
    // The member, or one shared null node if it is absent or this is no object.
    const Value& operator[](const char* name) const noexcept;
    const Value& operator[](const std::string& name) const noexcept;
    const Value& operator[](std::string_view name) const noexcept;
    // The member, or null pointer.
    const Value* find(std::string_view name) const noexcept;
    bool isMember(const char* name) const noexcept;
    bool isMember(const std::string& name) const noexcept;
    bool isMember(std::string_view name) const noexcept;
    // Takes the member out and gives it to the caller; null if it is absent. The flag has no
    // meaning here.
    Value removeMember(const std::string& name, bool flag = false);
    // The keys in byte order; none for all but objects.
    std::vector<std::string> getMemberNames() const;

    // --- Elements of an array
    // -------------------------------------------------------------------------------

    // The element of that 0-based number, or one shared null node if there is none or this is no
    // array. Never changes the array: on a node that may be changed, an absent element is a null
    // node of the calling thread that is emptied on each such call, and what is assigned to it is
    // lost.
    const Value& operator[](int index) const noexcept;
    const Value& operator[](unsigned int index) const noexcept;
    const Value& operator[](size_t index) const noexcept;
    Value& operator[](int index);
    Value& operator[](unsigned int index);
    Value& operator[](size_t index);

    // Puts a copy of the value (or the value itself, when it can be moved) at the end and returns
    // it there. A node that is no array becomes an empty array first, losing what it held. The
    // value may be a part of this array. The pointer form copies what it points to, which stays the
    // caller's; a null pointer appends null.
    Value& append(const Value& value);
    Value& append(Value&& value);
    Value& append(Value* value);
    // A number, among them a literal 0, is never taken for a pointer.
    template <typename Number, typename = std::enable_if_t<std::is_arithmetic_v<Number>>>
    Value& append(Number number) {
        return append(Value(number));
    }

    // --- Iterating
    // ------------------------------------------------------------------------------------------

    // Over the elements of an array, in order, or the members of an object, in byte order of the
    // keys; over nothing for all else. What moves references (see the head) ends the use of an
    // iterator.
    ValueIterator begin() noexcept;
    ValueIterator end() noexcept;
    ValueConstIterator begin() const noexcept;
    ValueConstIterator end() const noexcept;

    // --- Writing
    // --------------------------------------------------------------------------------------------

    // Compact JSON text: no blanks, no line feeds. The flag asks for nothing; callers pass it by
    // habit. Strings are written as QuoteJson says; NaN and infinities, for which JSON has no text,
    // as null.
    std::string toString(bool flag = false) const;
    // JSON text to be read by people: one element or member a line, indented by four blanks a level
    // (no deeper than 100 levels), `"key": value`, ending in a line feed.
    std::string toStyledString() const;

private:
    friend class ValueIteratorBase;
    struct Body;
    struct ArrayBody;
    struct ObjectBody;
    union Data {
        long long integer;
        unsigned long long natural;
        double real;
        std::string* text;
        Body* body;
    };

    Elements& elements() const noexcept;
    Members& members() const noexcept;
    Elements& BecomeArray();
    Members& BecomeObject();
    void CopyFlat(const Value& other);
    static void CopyTree(const Value& from, Value& to);
    bool EqualFlat(const Value& other) const noexcept;
    bool IsContainer() const noexcept { return m_type >= arrayValue; }
    void DropText() noexcept;
    void Release() noexcept;
    Body* TakeBody() noexcept;
    static void DestroyBodies(Body* pending) noexcept;
    static Value& ThrowAway();

    Data m_data;
    mutable std::atomic<std::string*> m_cachedText;  // owned; what asCString last gave out
    unsigned char m_type;
};

inline void swap(Value& a, Value& b) noexcept {
    a.swap(b);
}

// A place in an array or object. Iterators of one node compare; those of different nodes do not.
class TZPARSER_API ValueIteratorBase {
public:
    ValueIteratorBase() = default;

    // The node at the place, which must not be the end.
    const Value& deref() const noexcept { return *Current(); }
    void increment() noexcept;
    bool isEqual(const ValueIteratorBase& other) const noexcept;

    bool operator==(const ValueIteratorBase& other) const noexcept { return isEqual(other); }
    bool operator!=(const ValueIteratorBase& other) const noexcept { return !isEqual(other); }

    // The key of the member at the place, good as long as the member; "" in an array.
    const std::string& memberName() const noexcept;
    // The key of the member as a string node, or the number of the element as an integer node.
    Value key() const;

protected:
    ValueIteratorBase(const Value& node, bool atEnd) noexcept;
    Value* Current() const noexcept;

private:
    Value* m_first = nullptr;    // of an array
    Value* m_element = nullptr;  // of an array
    Value::Members::iterator m_member{};
    bool m_isObject = false;
};

class TZPARSER_API ValueIterator : public ValueIteratorBase {
public:
    ValueIterator() = default;
    Value& deref() const noexcept { return *Current(); }
    Value& operator*() const noexcept { return *Current(); }
    Value* operator->() const noexcept { return Current(); }
    ValueIterator& operator++() noexcept {
        increment();
        return *this;
    }

private:
    friend class Value;
    friend class ValueConstIterator;
    using ValueIteratorBase::ValueIteratorBase;
};

class TZPARSER_API ValueConstIterator : public ValueIteratorBase {
public:
    ValueConstIterator() = default;
    ValueConstIterator(const ValueIterator& other) : ValueIteratorBase(other) {}
    const Value& operator*() const noexcept { return *Current(); }
    const Value* operator->() const noexcept { return Current(); }
    ValueConstIterator& operator++() noexcept {
        increment();
        return *this;
    }

private:
    friend class Value;
    using ValueIteratorBase::ValueIteratorBase;
};

}  // namespace hxJson
