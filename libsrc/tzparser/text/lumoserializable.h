#pragma once

// The interface of an object that loads from and saves to a document of type T: hxJson::Value,
// CMarkup, or both at once. An operation that a class doesn't replace succeeds and does nothing.
//
//     class CThing : public Lumo::serialization::LumoSerializable<hxJson::Value> {
//     public:
//         bool Load(const hxJson::Value& value) override;
//         bool Save(hxJson::Value& value) override;
//     };
//
// The interface has no state; thread-safety is that of the implementing class.

namespace Lumo {
namespace serialization {

template <class T>
class LumoSerializableImpl {
public:
    LumoSerializableImpl() = default;
    LumoSerializableImpl(const LumoSerializableImpl&) = default;
    LumoSerializableImpl(LumoSerializableImpl&&) noexcept = default;
    LumoSerializableImpl& operator=(const LumoSerializableImpl&) = default;
    LumoSerializableImpl& operator=(LumoSerializableImpl&&) noexcept = default;
    virtual ~LumoSerializableImpl() = default;

    /// Takes the object's state from a document node. False when the node can't be used.
    virtual bool Load(const T& document);
    /// Writes the object's state into a document node. False when it could not be written.
    virtual bool Save(T& document);
};

template <class T>
bool LumoSerializableImpl<T>::Load(const T&) {
    return true;
}

template <class T>
bool LumoSerializableImpl<T>::Save(T&) {
    return true;
}

/// One `LumoSerializableImpl` for each document type named; the overloads stand side by side.
template <class... T>
class LumoSerializable : public LumoSerializableImpl<T>... {
public:
    using LumoSerializableImpl<T>::Load...;
    using LumoSerializableImpl<T>::Save...;
};

}  // namespace serialization
}  // namespace Lumo
