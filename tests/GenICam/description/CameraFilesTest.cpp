// SPDX-License-Identifier: Apache-2.0
// Real descriptions, where the environment variable KXAPI_CAMERA_XML names a folder of them, and the one of
// the samples.
#include "DescriptionTestSupport.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace KxGenApi
{
namespace
{

std::vector<std::filesystem::path> CameraFiles()
{
    std::vector<std::filesystem::path> files{KXAPI_SAMPLE_CAMERA};
    if (const char* const folder = std::getenv("KXAPI_CAMERA_XML"))
        for (const auto& entry : std::filesystem::directory_iterator(folder))
            if (entry.path().extension() == ".xml")
                files.push_back(entry.path());
    return files;
}

std::string ContentOf(const std::filesystem::path& path)
{
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

TEST(CameraFiles, SayTheSameWhenWrittenAndReadAgain)
{
    for (const auto& path : CameraFiles()) {
        const auto first = ReadDescription(ContentOf(path));
        EXPECT_GT(first->NodeCount(), 30u) << path;
        const std::string xml = WriteXml(*first);
        const auto second = ReadDescription(xml);
        EXPECT_TRUE(Content(*second) == Content(*first)) << path;
        EXPECT_TRUE(WriteXml(*second) == xml) << path;
    }
}

TEST(CameraFiles, HoldWhatRootNeedsInOneSubtree)
{
    for (const auto& path : CameraFiles()) {
        const auto whole = ReadDescription(ContentOf(path));
        const auto part = ExtractSubtree(*whole, whole->FindNode("Root"));
        for (NodeIndex i = 0; i < whole->NodeCount(); ++i)
            if (whole->Node(i).isFeature) {
                EXPECT_TRUE(part->Node(part->FindNode(whole->Node(i).name)).isFeature)
                    << path << whole->Node(i).name;
            }
    }
}

// Injecting a description into itself changes nothing.
TEST(CameraFiles, AreTheirOwnInjection)
{
    const std::string content = ContentOf(KXAPI_SAMPLE_CAMERA);
    EXPECT_EQ(Content(*ReadDescription(content, content)), Content(*ReadDescription(content)));
}

} // namespace
} // namespace KxGenApi
