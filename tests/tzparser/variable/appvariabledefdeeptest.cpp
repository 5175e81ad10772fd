#include "host/json/hxjson.h"
#include "tzparser/variable/definitiontext.h"

#include <gtest/gtest.h>

// Trees deeper than a thread's stack could follow, and nodes with very many children.

namespace {

constexpr int kDepth = 300000;

std::unique_ptr<CAppVariableDef> DeepTree() {
    auto root = std::make_unique<CAppVariableDef>();
    CAppVariableDef* last = root.get();
    for (int depth = 0; depth < kDepth; ++depth) {
        last = Add(*last, "n", AppDataType_String, AppVariableType_Column);
    }
    return root;
}

int DepthOf(const CAppVariableDef& root) {
    int depth = 0;
    for (const CAppVariableDef* node = &root; node->GetChildCount() > 0; ++depth) {
        node = node->GetChildAt(0);
    }
    return depth;
}

TEST(DeepDefinitions, CopyCompareSaveLoadAndDestroy) {
    const std::unique_ptr<CAppVariableDef> root = DeepTree();
    const std::unique_ptr<CAppVariableDef> copy(root->Copy(true));
    EXPECT_EQ(DepthOf(*copy), kDepth);
    EXPECT_TRUE(root->EqualTo(copy.get(), true));
    hxJson::Value value;
    EXPECT_TRUE(copy->Save(value));
    CAppVariableDef loaded;
    EXPECT_TRUE(loaded.Load(value));
    EXPECT_EQ(DepthOf(loaded), kDepth);
    copy->ClearTree();
    EXPECT_EQ(DepthOf(*copy), 0);
}

TEST(DeepDefinitions, Names) {
    const std::unique_ptr<CAppVariableDef> root = DeepTree();
    CAppVariableDef* last = root.get();
    while (last->GetChildCount() > 0) last = last->GetChildAt(0);
    EXPECT_EQ(last->GetLayerName().size(), std::size_t{2} * kDepth);
    EXPECT_EQ(last->GetDictName().size(), last->GetUIName().size());
    EXPECT_EQ(last->GetAppPyVarName().size(), std::size_t{kDepth} * 18);
    EXPECT_EQ(root->GetVarNodeFromPyVarName("absent"), nullptr);
    last->SetName("leaf");
    EXPECT_EQ(root->GetVarNodeFromPyVarName(last->GetGlobalName()), last);
}

TEST(DeepDefinitions, BuiltInPropertiesBelowEachOther) {
    CAppVariableDef root;
    CAppVariableDef* last = &root;
    for (int depth = 0; depth < kDepth / 3; ++depth) {
        last->InitBuiltInProperties();
        last = last->GetBuiltInProperties()[0];
    }
    const std::unique_ptr<CAppVariableDef> copy(root.Copy(false));
    EXPECT_EQ(copy->GetBuiltInProperties().size(), 5u);
}

TEST(DeepDefinitions, WideNodes) {
    hxJson::Value value;
    for (int index = 0; index < 100000; ++index) {
        value["childs"].append(hxJson::Value())["variable"]["name"] = "$n" + std::to_string(index);
    }
    CAppVariableDef root;
    EXPECT_TRUE(root.Load(value));
    EXPECT_EQ(root.GetChildCount(), 100000u);
    const std::unique_ptr<CAppVariableDef> copy(root.Copy(true));
    EXPECT_TRUE(root.EqualTo(copy.get(), true) && copy->EqualTo(&root, true));
}

}  // namespace
