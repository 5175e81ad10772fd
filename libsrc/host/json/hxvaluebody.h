#pragma once

// Inside of hxJson::Value: what an array or object node owns. Only the sources of Value include
// this.

#include "host/json/hxvalue.h"

namespace hxJson {

struct Value::Body {
    explicit Body(bool object) : isObject(object) {}
    Body* next = nullptr;  // the chain of bodies to destroy, see DestroyBodies
    const bool isObject;
};

struct Value::ArrayBody : Body {
    ArrayBody() : Body(false) {}
    Elements elements;
};

struct Value::ObjectBody : Body {
    ObjectBody() : Body(true) {}
    Members members;
};

inline Value::Elements& Value::elements() const noexcept {
    return static_cast<ArrayBody*>(m_data.body)->elements;
}

inline Value::Members& Value::members() const noexcept {
    return static_cast<ObjectBody*>(m_data.body)->members;
}

}  // namespace hxJson
