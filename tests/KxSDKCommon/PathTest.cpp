// SPDX-License-Identifier: Apache-2.0
#include <KxSDKCommon/Path.h>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

namespace fs = std::filesystem;

namespace
{

class PathTest : public testing::Test
{
protected:
    void SetUp() override
    {
        char szFolder[] = "/tmp/kxpathXXXXXX";
        ASSERT_NE(mkdtemp(szFolder), nullptr);
        folder = szFolder;
    }
    void TearDown() override
    {
        fs::current_path("/");
        fs::remove_all(folder);
    }

    GenICam::gcstring At(const char* szPath) const { return (folder / szPath).c_str(); }
    size_t EntriesBelow() const
    {
        return static_cast<size_t>(std::distance(fs::recursive_directory_iterator(folder), {}));
    }

    fs::path folder;
};

TEST_F(PathTest, FilePathGetsItsFoldersAndNotItsFile)
{
    MakePath(At("a/b/c.txt"), true);
    EXPECT_TRUE(fs::is_directory(folder / "a/b"));
    EXPECT_EQ(EntriesBelow(), 2u);
    MakePath(At("a/b/c.txt"), true);
    EXPECT_EQ(EntriesBelow(), 2u);
}

TEST_F(PathTest, FolderPathIsMadeWhole)
{
    MakePath(At("x/y/z"), false);
    EXPECT_TRUE(fs::is_directory(folder / "x/y/z"));
    MakePath(At("x//w/"), false);
    EXPECT_TRUE(fs::is_directory(folder / "x/w"));
    fs::current_path(folder);
    MakePath("here", false);
    EXPECT_TRUE(fs::is_directory(folder / "here"));
    MakePath("relative/deep", false);
    EXPECT_TRUE(fs::is_directory(folder / "relative/deep"));
    MakePath("plain.txt", true); // no slash, so nothing is cut
    EXPECT_TRUE(fs::is_directory(folder / "plain.txt"));
}

TEST_F(PathTest, WhatCannotBeMadeIsPassedOver)
{
    MakePath(At("file/inside"), false);
    fs::remove_all(folder / "file");
    std::unique_ptr<FILE, int (*)(FILE*)> file(std::fopen(At("file").c_str(), "w"), &std::fclose);
    MakePath(At("file/inside"), false);
    EXPECT_TRUE(fs::is_regular_file(folder / "file"));
    for (const char* const szPath : {"", "/", "//", "///a"})
        MakePath(szPath, true);
    std::string deep;
    for (int i = 0; i < 10000; ++i)
        deep += "/a";
    MakePath((folder.string() + deep).c_str(), false); // far beyond what a path may have
}

TEST_F(PathTest, TemporaryFileIsInNoFolderAndTakesBytes)
{
    setenv("TMPDIR", folder.c_str(), 1);
    const std::unique_ptr<FILE, int (*)(FILE*)> file(openTempFile("KxTemp"), &std::fclose);
    ASSERT_TRUE(file);
    EXPECT_EQ(EntriesBelow(), 0u);
    EXPECT_EQ(std::fputs("text", file.get()), 1);
    EXPECT_EQ(std::fflush(file.get()), 0);
    struct stat info
    {};
    ASSERT_EQ(fstat(fileno(file.get()), &info), 0);
    EXPECT_EQ(info.st_size, 4);
    EXPECT_EQ(info.st_nlink, 0u);
    struct stat there
    {};
    ASSERT_EQ(stat(folder.c_str(), &there), 0);
    EXPECT_EQ(info.st_dev, there.st_dev);
    unsetenv("TMPDIR");
}

TEST_F(PathTest, TemporaryFileNeedsItsFolder)
{
    setenv("TMPDIR", At("missing").c_str(), 1);
    EXPECT_EQ(openTempFile("KxTemp"), nullptr);
    unsetenv("TMPDIR");
    EXPECT_EQ(openTempFile(std::string(250, 'n').c_str()), nullptr) << "longer than the path may be";
    const std::unique_ptr<FILE, int (*)(FILE*)> file(openTempFile("KxTemp"), &std::fclose);
    EXPECT_TRUE(file) << "/tmp is taken when nothing is said";
}

} // namespace
