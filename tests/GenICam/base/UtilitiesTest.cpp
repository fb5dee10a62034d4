// SPDX-License-Identifier: Apache-2.0
#include <Base/GCUtilities.h>

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

using namespace GenICam;

TEST(Utilities, IntegralCastRefusesWhatDoesNotFit)
{
    EXPECT_EQ(INTEGRAL_CAST<uint8_t>(255), 255);
    EXPECT_EQ(INTEGRAL_CAST<int8_t>(int64_t(-128)), -128);
    EXPECT_EQ((INTEGRAL_CAST2<int32_t, int64_t>(5)), 5);
    EXPECT_THROW(INTEGRAL_CAST<uint8_t>(256), RuntimeException);
    EXPECT_THROW(INTEGRAL_CAST<uint64_t>(-1), RuntimeException) << "same bits, other sign";
    EXPECT_THROW(INTEGRAL_CAST<int64_t>(UINT64_MAX), RuntimeException);
    EXPECT_THROW(INTEGRAL_CAST<uint32_t>(int64_t(1) << 32), RuntimeException);
    try {
        INTEGRAL_CAST<int8_t>(-129);
        FAIL();
    } catch (const RuntimeException& e) {
        EXPECT_STREQ(e.GetDescription(), "INTEGRAL_CAST failed: -129 doesn't fit into an integer of 8 bits");
    }
}

TEST(Utilities, ReadsAndReplacesEnvironmentVariables)
{
    setenv("KX_TEST_ONE", "a b", 1);
    setenv("KX_TEST_TWO", "$(KX_TEST_ONE)", 1);
    unsetenv("KX_TEST_NONE");
    EXPECT_TRUE(DoesEnvironmentVariableExist("KX_TEST_ONE"));
    EXPECT_FALSE(DoesEnvironmentVariableExist("KX_TEST_NONE"));
    EXPECT_EQ(GetValueOfEnvironmentVariable("KX_TEST_ONE"), "a b");
    EXPECT_THROW(GetValueOfEnvironmentVariable("KX_TEST_NONE"), RuntimeException);
    gcstring value("kept");
    EXPECT_FALSE(GetValueOfEnvironmentVariable("KX_TEST_NONE", value));
    EXPECT_EQ(value, "kept");

    gcstring text("$(KX_TEST_ONE)/x y/$(KX_TEST_TWO)/$(open");
    ReplaceEnvironmentVariables(text);
    EXPECT_EQ(text, "a b/x y/$(KX_TEST_ONE)/$(open");
    text = "$(KX_TEST_ONE) c";
    ReplaceEnvironmentVariables(text, true);
    EXPECT_EQ(text, "a%20b%20c");
    text = "$(KX_TEST_NONE)";
    EXPECT_THROW(ReplaceEnvironmentVariables(text), RuntimeException);
    EXPECT_EQ(text, "$(KX_TEST_NONE)");
}

TEST(Utilities, FoldersComeFromProgramOrEnvironment)
{
    unsetenv("GENICAM_CACHE_V3_4");
    EXPECT_THROW(GetGenICamCacheFolder(), RuntimeException);
    setenv("GENICAM_CACHE_V3_4", "/env", 1);
    EXPECT_EQ(GetGenICamCacheFolder(), "/env");
    setenv("KX_TEST_ONE", "sub", 1);
    SetGenICamCacheFolder("/set/$(KX_TEST_ONE)");
    EXPECT_EQ(GetGenICamCacheFolder(), "/set/sub");
    SetGenICamCacheFolder("");
    unsetenv("GENICAM_CACHE_V3_4");
}

TEST(Utilities, ListsFiles)
{
    namespace fs = std::filesystem;
    const fs::path folder = fs::temp_directory_path() / ("kx-files-" + std::to_string(getpid()));
    fs::create_directories(folder / "c.cti");
    for (const char* name : {"b.cti", "a.cti", "a.txt", ".hidden.cti"})
        std::ofstream(folder / name) << "x";
    setenv("KX_TEST_FOLDER", folder.c_str(), 1);

    gcstring_vector files{"first"};
    GetFiles("$(KX_TEST_FOLDER)/*.cti", files);
    EXPECT_EQ(files, (gcstring_vector{"first", gcstring((folder / "a.cti").c_str()),
                                      gcstring((folder / "b.cti").c_str())}));
    gcstring_vector folders;
    GetFiles(gcstring((folder / "?.cti").c_str()), folders, true);
    EXPECT_EQ(folders, gcstring_vector(1, gcstring((folder / "c.cti").c_str())));
    gcstring_vector none;
    GetFiles("/no/such/folder/*", none);
    EXPECT_TRUE(none.empty());
    fs::remove_all(folder);
}

TEST(Utilities, Tokenizes)
{
    gcstring_vector tokens;
    Tokenize("  a b;;c ", tokens, " ;");
    Tokenize("", tokens);
    Tokenize("d", tokens);
    Tokenize("e f", tokens);
    EXPECT_EQ(tokens, (gcstring_vector{"a", "b", "c", "d", "e", "f"}));
}

TEST(Utilities, UrlCodingIsReversible)
{
    EXPECT_EQ(UrlEncode("file:///a b/\xC3\xA4%.xml?x=1"), "file:///a%20b/%C3%A4%25.xml?x=1");
    EXPECT_EQ(UrlDecode("a%20b%c3%A4"), "a b\xC3\xA4");
    EXPECT_EQ(UrlDecode("100%"), "100%");
    EXPECT_EQ(UrlDecode("%4"), "%4");
    EXPECT_EQ(UrlDecode("%zz%41"), "%zzA");
    EXPECT_EQ(UrlDecode("%00").size(), 1u);
    gcstring all;
    for (int byte = 0; byte < 256; ++byte)
        all += static_cast<char>(static_cast<unsigned char>(byte));
    EXPECT_EQ(UrlDecode(UrlEncode(all)), all);
}

TEST(Utilities, FindsModuleOfFunction)
{
    EXPECT_NE(GetModulePathFromFunction(reinterpret_cast<void*>(&UrlEncode)).find("KxGCBase"),
              gcstring::npos);
    EXPECT_TRUE(GetModulePathFromFunction(nullptr).empty());
}
