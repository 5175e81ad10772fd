#pragma once

#include <map>
#include <memory>
#include <utility>

// IDynCreateClass is what a family of small objects offers that are known by number and made from
// prototypes.
//
//     class CThing : public IDynCreateClass<CThing> { ... };   // each kind implements the four
//     std::unique_ptr<CThing> copy(thing.Clone());
//
// The interface has no state; thread-safety is that of the implementing class.
template <class T>
class IDynCreateClass {
public:
    IDynCreateClass() = default;
    IDynCreateClass(const IDynCreateClass&) = delete;
    IDynCreateClass& operator=(const IDynCreateClass&) = delete;
    virtual ~IDynCreateClass() = default;

    // The number of the kind, by which documents name it.
    virtual int GetType() const = 0;
    // The kind's name for people, good to the end of the process.
    virtual const char* GetTypeName() = 0;
    // A new object of the kind, which the caller owns; null when there can be none.
    virtual T* CreateObj() = 0;
    // Gives the target what this object holds. False for null and for a target of another kind.
    virtual bool CopyTo(T* target) = 0;

    // A new object that CopyTo was called on, whatever that answered; the caller owns it. Null when
    // CreateObj gives null.
    T* Clone() {
        std::unique_ptr<T> copy(CreateObj());
        if (copy) CopyTo(copy.get());
        return copy.release();
    }
};

// CDynCreateFactory makes objects of a family by the number of their kind, as copies of registered
// prototypes.
//
//     factory.Register(std::make_unique<CSomeThing>());
//     std::unique_ptr<CThing> thing = factory.Create(3);
//
// Create may run on many threads at once, as long as none registers.
template <class T>
class CDynCreateFactory {
public:
    // Keeps the prototype. False, and the prototype is gone, when its number is taken already.
    bool Register(std::unique_ptr<T> prototype) {
        const int type = prototype->GetType();
        return m_prototypes.emplace(type, std::move(prototype)).second;
    }

    // A clone of the prototype of that number; null when there is none and for a negative number.
    std::unique_ptr<T> Create(int type) const {
        if (type < 0) return nullptr;
        const auto at = m_prototypes.find(type);
        return std::unique_ptr<T>(at != m_prototypes.end() ? at->second->Clone() : nullptr);
    }

private:
    std::map<int, std::unique_ptr<T>> m_prototypes;
};
