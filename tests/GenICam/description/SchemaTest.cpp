// SPDX-License-Identifier: Apache-2.0
// The tables against the words of the standard, and the notation of the rules.
#include "description/Schema.h"

#include <gtest/gtest.h>

namespace KxGenApi
{
namespace
{

TEST(Schema, FindsEachElementByItsName)
{
    for (size_t i = 0; i < kPropCount; ++i) {
        const PropertyInfo& info = InfoOf(static_cast<Prop>(i));
        const bool isElement = info.prop != Prop::EntryName && info.prop != Prop::Other;
        EXPECT_EQ(FindProperty(info.name), isElement ? &info : nullptr) << info.name;
        if (isElement) {
            EXPECT_EQ(FindProperty("ga:" + std::string(info.name)), &info) << info.name;
        }
    }
    for (size_t i = 0; i < kNodeTypeCount; ++i)
        EXPECT_EQ(FindNodeKind(InfoOf(static_cast<NodeType>(i)).name), &InfoOf(static_cast<NodeType>(i)));
    for (const char* name : {"", "pvalue", "pValue ", "pValu", "Valuee", "integer", ":", "a:"}) {
        EXPECT_EQ(FindProperty(name), nullptr) << name;
        EXPECT_EQ(FindNodeKind(name), nullptr) << name;
    }
}

// An entry's complete rules have to cover all that a StructReg or the entry itself can bring.
TEST(Schema, CompleteEntriesTakeEverythingOfTheirParts)
{
    for (size_t i = 0; i < kPropCount; ++i) {
        const Prop prop = static_cast<Prop>(i);
        if (StructRegRules().Allows(prop) || RulesOf(NodeType::StructEntry).Allows(prop)) {
            EXPECT_TRUE(CompleteEntryRules().Allows(prop)) << InfoOf(prop).name;
        }
    }
}

} // namespace
} // namespace KxGenApi
