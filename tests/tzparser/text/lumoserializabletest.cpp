#include "tzparser/text/lumoserializable.h"

#include <gtest/gtest.h>

namespace {

using Lumo::serialization::LumoSerializable;

struct FirstDocument {
    int loads = 0;
};
struct SecondDocument {};

struct Both : LumoSerializable<FirstDocument, SecondDocument> {
    using LumoSerializable::Load;
    bool Load(const FirstDocument&) override { return false; }
};

TEST(LumoSerializable, WhatAClassDoesNotReplaceSucceeds) {
    Both both;
    FirstDocument first;
    SecondDocument second;
    EXPECT_FALSE(both.Load(first));
    EXPECT_TRUE(both.Load(second));
    EXPECT_TRUE(both.Save(first));
    EXPECT_TRUE(both.Save(second));
}

}  // namespace
