// SPDX-License-Identifier: Apache-2.0
#include "DescriptionTestSupport.h"

#include <gmock/gmock.h>

#include <thread>

namespace KxGenApi
{
namespace
{

TEST(SharedDescription, IsHandedOutAgainWhileInUse)
{
    const std::string text = Doc("<Node Name='SharedByTest'/>");
    const std::string copy = text;
    auto first = ReadSharedDescription(text);
    EXPECT_EQ(ReadSharedDescription(copy), first);
    EXPECT_EQ(ReadSharedDescription(copy, ContentType::Xml)->FindNode("SharedByTest"), 0u);
    EXPECT_NE(ReadSharedDescription(text + " "), first) << "other bytes";
    const std::weak_ptr<const Description> watched = first;
    first.reset();
    EXPECT_TRUE(watched.expired()) << "nobody needs it, nobody keeps it";
    EXPECT_EQ(ReadSharedDescription(text)->FindNode("SharedByTest"), 0u);
}

TEST(SharedDescription, ErrorsAreNotRemembered)
{
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(ErrorOf([] { ReadSharedDescription("<x/>"); }).substr(0, 8), "Runtime:");
    EXPECT_EQ(ErrorOf([] { ReadSharedDescription(""); }).substr(0, 15), "InvalidArgument");
}

TEST(SharedDescription, ThreadsGetTheSame)
{
    const std::string text = Doc("<Node Name='SharedByThreads'/>");
    std::vector<std::shared_ptr<const Description>> results(8);
    std::vector<std::thread> threads;
    for (auto& result : results)
        threads.emplace_back([&result, &text] { result = ReadSharedDescription(text); });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_THAT(results, testing::Each(results.front()));
}

} // namespace
} // namespace KxGenApi
