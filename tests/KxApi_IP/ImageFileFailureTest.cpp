// SPDX-License-Identifier: Apache-2.0
// Files that can't be written leave nothing, and files that aren't sound leave the image as it was.

#include "FileTestSupport.h"
#include "FullDisk.h"
#include "HandMadeFiles.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>

using namespace KxApi;
using namespace KxTest;
using ::testing::HasSubstr;
using ::testing::Not;

namespace
{

constexpr EKxStillImageFileType_t kAllTypes[] = {KxStillImageFileType_Raw,  KxStillImageFileType_Bmp,
                                                 KxStillImageFileType_Jpeg, KxStillImageFileType_Tiff,
                                                 KxStillImageFileType_Png,  KxStillImageFileType_Csv};

class ImageFileFailureTest : public ::testing::Test
{
protected:
    std::string SaveFailure(IKxImage* image, EKxStillImageFileType_t type, const std::string& path)
    {
        return Failure([&] { m_filer->Save(image, type, path.c_str()); });
    }
    std::string LoadFailure(const std::string& path)
    {
        ImageBuffer buffer = ImageOf<uint8_t>(KxPixelFormat_Mono8, 1, 1, {99});
        const std::string failure = Failure([&] { m_filer->Load(buffer.Get(), path.c_str()); });
        if (!failure.empty()) {
            EXPECT_EQ(buffer->GetIKxImage()->GetImageWidth(), 1U);
            EXPECT_EQ(*static_cast<uint8_t*>(buffer->GetIKxImage()->GetImageBuffer()), 99);
        }
        return failure;
    }

    CKxApiAutoInitTerm m_sdk;
    Folder m_folder;
    Filer m_filer{CreateIKxFiler(KxFilerType_StillImage)};
    ImageBuffer m_image = NoiseImage(KxPixelFormat_Mono8, 300, 200);
};

TEST_F(ImageFileFailureTest, AFullDiskLeavesTheFolderAsItWas)
{
    m_filer->SetPngCompression(0);
    for (const auto type : kAllTypes) {
        SCOPED_TRACE(type);
        const std::string path = m_folder / "image";
        WriteBytes(path, "what was there before");
        for (const rlim_t room : {rlim_t{0}, rlim_t{10000}}) {
            const FullDisk disk(room);
            const std::string failure = SaveFailure(m_image->GetIKxImage(), type, path);
            EXPECT_THAT(failure, HasSubstr(path));
            EXPECT_THAT(failure, ::testing::EndsWith("File too large"));
        }
        EXPECT_EQ(ReadBytes(path), "what was there before");
        EXPECT_THAT(m_folder.Names(), ::testing::ElementsAre("image"));
    }
}

TEST_F(ImageFileFailureTest, PathsThatCannotBeWrittenAreNamedWithTheCause)
{
    IKxImage* const image = m_image->GetIKxImage();
    for (const auto type : kAllTypes) {
        EXPECT_THAT(SaveFailure(image, type, m_folder / "none/a"), HasSubstr("No such file or directory"));
        EXPECT_THAT(SaveFailure(image, type, m_folder / ""), HasSubstr("Is a directory"));
        EXPECT_THAT(SaveFailure(image, type, ""), HasSubstr("No such file"));
        errno = 0;
        const std::string failure = SaveFailure(image, type, "/dev/full");
        EXPECT_THAT(failure, HasSubstr("'/dev/full': it is not a regular file"));
        EXPECT_THAT(failure, Not(::testing::EndsWith("Success")));
        EXPECT_THAT(SaveFailure(image, type, (m_folder / "x") + std::string(300, 'n')),
                    HasSubstr("File name too long"));
    }
    struct stat device = {};
    ASSERT_EQ(stat("/dev/full", &device), 0);
    EXPECT_TRUE(S_ISCHR(device.st_mode)); // and no file in its place
    EXPECT_TRUE(m_folder.Names().empty());
}

TEST_F(ImageFileFailureTest, ImagesThatCannotBeSavedLeaveNoFile)
{
    const std::string path = m_folder / "a";
    const ImageBuffer yuv = NoiseImage(KxPixelFormat_YUV422_8, 8, 2);
    EXPECT_THAT(SaveFailure(yuv->GetIKxImage(), KxStillImageFileType_Png, path),
                HasSubstr("YUV422_8 can't be saved in a PNG file"));
    EXPECT_THAT(SaveFailure(yuv->GetIKxImage(), static_cast<EKxStillImageFileType_t>(6), path),
                HasSubstr("6 is no type"));
    EXPECT_THAT(SaveFailure(nullptr, KxStillImageFileType_Bmp, path), HasSubstr("There is no image"));
    const ImageBuffer wide = NoiseImage(KxPixelFormat_Mono8, 70000, 1);
    EXPECT_THAT(SaveFailure(wide->GetIKxImage(), KxStillImageFileType_Jpeg, path), HasSubstr("70000 x 1"));
    // 4:2:2 chroma of the last pixel would lie behind the line
    const ImageBuffer odd = NoiseImage(KxPixelFormat_YUV422_8, 3, 1, 2);
    EXPECT_THAT(SaveFailure(odd->GetIKxImage(), KxStillImageFileType_Raw, path), HasSubstr("line pitch"));
    EXPECT_TRUE(m_folder.Names().empty());
}

TEST_F(ImageFileFailureTest, LinksAndRightsOfAReplacedFileStay)
{
    WriteBytes(m_folder / "real", "old");
    ASSERT_EQ(chmod((m_folder / "real").c_str(), 0640), 0);
    // Only root may give files away; others keep a file of their own.
    const uid_t owner = geteuid() == 0 ? 12345 : geteuid();
    ASSERT_EQ(chown((m_folder / "real").c_str(), owner, geteuid() == 0 ? 54321 : getegid()), 0);
    ASSERT_EQ(symlink("real", (m_folder / "link").c_str()), 0);
    m_filer->Save(m_image->GetIKxImage(), KxStillImageFileType_Raw, (m_folder / "link").c_str());
    struct stat status = {};
    ASSERT_EQ(lstat((m_folder / "link").c_str(), &status), 0);
    EXPECT_TRUE(S_ISLNK(status.st_mode));
    ASSERT_EQ(stat((m_folder / "real").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0640U);
    EXPECT_EQ(status.st_uid, owner);
    EXPECT_EQ(LoadFailure(m_folder / "real"), "");
}

TEST_F(ImageFileFailureTest, FilesCutAnywhereAreRefused)
{
    const ImageBuffer image = NoiseImage(KxPixelFormat_RGB8, 9, 5);
    for (const auto type : kAllTypes) {
        if (type == KxStillImageFileType_Csv)
            continue;
        SCOPED_TRACE(type);
        m_filer->Save(image->GetIKxImage(), type, (m_folder / "whole").c_str());
        const std::string whole = ReadBytes(m_folder / "whole");
        for (size_t size = 0; size < whole.size(); ++size) {
            WriteBytes(m_folder / "cut", whole.substr(0, size));
            ASSERT_THAT(LoadFailure(m_folder / "cut"), HasSubstr(m_folder / "cut")) << size << " bytes";
        }
    }
}

TEST_F(ImageFileFailureTest, AnyChangedByteOfARawFileIsSeen)
{
    const ImageBuffer image = NoiseImage(KxPixelFormat_Mono12Packed, 4, 3);
    m_filer->Save(image->GetIKxImage(), KxStillImageFileType_Raw, (m_folder / "whole").c_str());
    const std::string whole = ReadBytes(m_folder / "whole");
    for (size_t i = 0; i < whole.size(); ++i) {
        std::string changed = whole;
        changed[i] = static_cast<char>(changed[i] ^ 0x10);
        WriteBytes(m_folder / "changed", changed);
        ASSERT_NE(LoadFailure(m_folder / "changed"), "") << "byte " << i;
    }
    WriteBytes(m_folder / "changed", whole + '\0');
    EXPECT_THAT(LoadFailure(m_folder / "changed"), HasSubstr("bytes should follow the header"));
}

TEST_F(ImageFileFailureTest, DeclaredSizesBeyondTheLimitTakeNoMemory)
{
    for (const auto type : kAllTypes) {
        if (type == KxStillImageFileType_Csv)
            continue;
        SCOPED_TRACE(type);
        m_filer->Save(m_image->GetIKxImage(), type, (m_folder / "image").c_str());
        m_filer->SetMaxLoadSize(59999);
        EXPECT_THAT(LoadFailure(m_folder / "image"), HasSubstr("limit of 59999"));
        m_filer->SetMaxLoadSize(60000);
        EXPECT_EQ(LoadFailure(m_folder / "image"), "");
    }
}

/// Lets the process take little more memory than it has, while it lives.
class LittleMemory
{
public:
    explicit LittleMemory(rlim_t more)
    {
        size_t pages = 0;
        std::ifstream("/proc/self/statm") >> pages;
        getrlimit(RLIMIT_AS, &m_old);
        const rlimit limit{pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE)) + more, m_old.rlim_max};
        setrlimit(RLIMIT_AS, &limit);
    }
    LittleMemory(const LittleMemory&) = delete;
    LittleMemory& operator=(const LittleMemory&) = delete;
    ~LittleMemory() { setrlimit(RLIMIT_AS, &m_old); }

private:
    rlimit m_old{};
};

TEST_F(ImageFileFailureTest, SizesThatAFileCannotHoldAreSeenBeforeMemoryIsTaken)
{
    const auto failure = [&](const std::string& bytes) {
        WriteBytes(m_folder / "bomb", bytes);
        const LittleMemory memory(rlim_t{256} << 20);
        return LoadFailure(m_folder / "bomb");
    };
    m_filer->SetMaxLoadSize(~uint64_t{0});
    for (const char* const height : {"\0\0\0\1", "\x7F\xFF\xFF\xFF"}) {
        const std::string header = std::string("\x7F\xFF\xFF\xFF") + std::string(height, 4);
        EXPECT_THAT(failure("\x89PNG\r\n\x1A\n" + PngChunk("IHDR" + header + std::string("\x08\0\0\0\0", 5)) +
                            PngChunk(std::string("IDAT\x78\1\1\0\0\xFF\xFF", 11)) + PngChunk("IEND")),
                    HasSubstr("can't hold 2147483647 x "));
    }
    // The height of a TIFF is the value of tag 257; the table of strips then has too few.
    m_filer->Save(m_image->GetIKxImage(), KxStillImageFileType_Tiff, (m_folder / "whole").c_str());
    const std::string tiff = ReadBytes(m_folder / "whole");
    for (const size_t byte : {1U, 2U, 3U}) {
        std::string changed = tiff;
        changed[tiff.find(std::string("\x01\x01\x03\0\1\0\0\0", 8)) + 2] = 4; // a number of 32 bits
        changed[tiff.find(std::string("\x01\x01\x03\0\1\0\0\0", 8)) + 8 + byte] = 0x0C;
        EXPECT_THAT(failure(changed), ::testing::AnyOf(HasSubstr("is missing"), HasSubstr("can't hold"),
                                                       HasSubstr("StripOffsets")));
    }
    // Of a progressive JPEG the library keeps all coefficients.
    m_filer->Save(m_image->GetIKxImage(), KxStillImageFileType_Jpeg, (m_folder / "whole").c_str());
    std::string jpeg = ReadBytes(m_folder / "whole");
    const size_t frame = jpeg.find("\xFF\xC0");
    jpeg.replace(frame, 9, std::string("\xFF\xC2\0\x0B\x08\xFF\xDC\xFF\xDC", 9));
    EXPECT_THAT(failure(jpeg), HasSubstr("can't hold 65500 x 65500"));
    EXPECT_THAT(failure(HandMadeBmp(60000, 60000, 8, 1, std::string(1024, '\0'), std::string("\0\1", 2))),
                HasSubstr("can't hold 60000 x 60000"));
}

TEST_F(ImageFileFailureTest, LeftoversOfKilledSavesGoWithTheNextAndNoOthers)
{
    WriteBytes(m_folder / ".kx-0.tmp", "left");
    WriteBytes(m_folder / ".kx-5.tmp", "left");
    WriteBytes(m_folder / ".kx-2.tmp", "being written");
    const int other = open((m_folder / ".kx-2.tmp").c_str(), O_RDONLY);
    ASSERT_EQ(flock(other, LOCK_EX), 0);
    m_filer->Save(m_image->GetIKxImage(), KxStillImageFileType_Raw, (m_folder / "image").c_str());
    EXPECT_THAT(m_folder.Names(), ::testing::UnorderedElementsAre("image", ".kx-2.tmp"));
    close(other);
}

TEST_F(ImageFileFailureTest, WhatIsNoImageFileIsRefused)
{
    EXPECT_THAT(LoadFailure(m_folder / "none"), HasSubstr("No such file or directory"));
    EXPECT_THAT(LoadFailure(m_folder / ""), HasSubstr("Is a directory"));
    EXPECT_THAT(LoadFailure("/dev/zero"), HasSubstr("not a regular file"));
    ASSERT_EQ(mkfifo((m_folder / "pipe").c_str(), 0600), 0);
    EXPECT_THAT(LoadFailure(m_folder / "pipe"), HasSubstr("not a regular file"));
    WriteBytes(m_folder / "text", "hello");
    EXPECT_THAT(LoadFailure(m_folder / "text"), HasSubstr("no BMP, JPEG, TIFF, PNG or kxraw file"));
    EXPECT_THROW(m_filer->Load(nullptr, (m_folder / "text").c_str()), GenICam::LogicalErrorException);
}

} // namespace
