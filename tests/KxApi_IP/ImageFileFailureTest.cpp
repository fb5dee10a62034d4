// SPDX-License-Identifier: Apache-2.0
// Files that can't be written leave nothing, and files that aren't sound leave the image as it was.

#include "FileTestSupport.h"

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <cstring>

using namespace KxApi;
using namespace KxTest;
using ::testing::HasSubstr;

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

/// Lets no file of the process grow beyond a size, as a full disk does, while it lives.
class FullDisk
{
public:
    explicit FullDisk(rlim_t size)
        : m_oldHandler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_old);
        const rlimit limit{size, m_old.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_old);
        std::signal(SIGXFSZ, m_oldHandler);
    }

private:
    rlimit m_old{};
    void (*m_oldHandler)(int);
};

TEST_F(ImageFileFailureTest, a_full_disk_leaves_the_folder_as_it_was)
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
            EXPECT_THAT(failure, HasSubstr("File too large"));
        }
        EXPECT_EQ(ReadBytes(path), "what was there before");
        EXPECT_THAT(m_folder.Names(), ::testing::ElementsAre("image"));
    }
}

TEST_F(ImageFileFailureTest, paths_that_cannot_be_written_are_named_with_the_cause)
{
    IKxImage* const image = m_image->GetIKxImage();
    for (const auto type : kAllTypes) {
        EXPECT_THAT(SaveFailure(image, type, m_folder / "none/a"), HasSubstr("No such file or directory"));
        EXPECT_THAT(SaveFailure(image, type, m_folder / ""), HasSubstr("Is a directory"));
        EXPECT_THAT(SaveFailure(image, type, ""), HasSubstr("No such file"));
        EXPECT_THAT(SaveFailure(image, type, "/dev/full"),
                    HasSubstr("'/dev/full': it is not a regular file"));
        EXPECT_THAT(SaveFailure(image, type, (m_folder / "x") + std::string(300, 'n')),
                    HasSubstr("File name too long"));
    }
    struct stat device = {};
    ASSERT_EQ(stat("/dev/full", &device), 0);
    EXPECT_TRUE(S_ISCHR(device.st_mode)); // and no file in its place
    EXPECT_TRUE(m_folder.Names().empty());
}

TEST_F(ImageFileFailureTest, images_that_cannot_be_saved_leave_no_file)
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

TEST_F(ImageFileFailureTest, links_and_rights_of_a_replaced_file_stay)
{
    WriteBytes(m_folder / "real", "old");
    ASSERT_EQ(chmod((m_folder / "real").c_str(), 0640), 0);
    ASSERT_EQ(symlink("real", (m_folder / "link").c_str()), 0);
    m_filer->Save(m_image->GetIKxImage(), KxStillImageFileType_Raw, (m_folder / "link").c_str());
    struct stat status = {};
    ASSERT_EQ(lstat((m_folder / "link").c_str(), &status), 0);
    EXPECT_TRUE(S_ISLNK(status.st_mode));
    ASSERT_EQ(stat((m_folder / "real").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0640U);
    EXPECT_EQ(LoadFailure(m_folder / "real"), "");
}

TEST_F(ImageFileFailureTest, files_cut_anywhere_are_refused)
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

TEST_F(ImageFileFailureTest, any_changed_byte_of_a_raw_file_is_seen)
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

TEST_F(ImageFileFailureTest, changed_bytes_of_pictures_end_well_or_in_an_exception)
{
    for (const auto type : {KxStillImageFileType_Bmp, KxStillImageFileType_Jpeg, KxStillImageFileType_Tiff,
                            KxStillImageFileType_Png})
    {
        const ImageBuffer image = NoiseImage(KxPixelFormat_RGB8, 3, 2);
        m_filer->SetMaxLoadSize(uint64_t{1} << 24);
        m_filer->Save(image->GetIKxImage(), type, (m_folder / "whole").c_str());
        const std::string whole = ReadBytes(m_folder / "whole");
        for (size_t i = 0; i < whole.size(); ++i) {
            for (const int change : {0xFF, 0x01}) {
                std::string changed = whole;
                changed[i] = static_cast<char>(changed[i] ^ change);
                WriteBytes(m_folder / "changed", changed);
                LoadFailure(m_folder / "changed"); // checks that a refusal leaves the image alone
            }
        }
    }
}

TEST_F(ImageFileFailureTest, declared_sizes_beyond_the_limit_take_no_memory)
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
    // A header of a hundred bytes that tells of gigabytes is refused whatever the limit.
    m_filer->SetMaxLoadSize(~uint64_t{0});
    std::string png = "\x89PNG\r\n\x1A\n";
    png += std::string("\0\0\0\x0DIHDR\x7F\xFF\xFF\xFF\x7F\xFF\xFF\xFF\x10\x06\0\0\0\xC3\x38\x5F\xA6", 25);
    png += std::string("\0\0\0\x01IDAT\x78\0\0\0\0", 13);
    WriteBytes(m_folder / "bomb", png);
    EXPECT_NE(LoadFailure(m_folder / "bomb"), "");
}

TEST_F(ImageFileFailureTest, what_is_no_image_file_is_refused)
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
