// SPDX-License-Identifier: Apache-2.0
// Recording without a camera.
#include "FakeStreamImage.h"
#include "FullDisk.h"
#include "ImageRing.h"
#include "Recorder.h"
#include "SequenceReader.h"
#include "SequenceWriter.h"

#include <KxApi_TL/KxApi_TL.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace
{

using namespace KxApi;
using namespace KxApps;
using KxTest::FakeStreamImage;
using testing::AllOf;
using testing::HasSubstr;

constexpr auto kLong = std::chrono::seconds(60);
constexpr uint64_t kMuch = uint64_t{64} << 20;

class Recording : public testing::Test
{
protected:
    void SetUp() override
    {
        std::string name = (std::filesystem::temp_directory_path() / "kx-tests-XXXXXX").string();
        ASSERT_NE(mkdtemp(name.data()), nullptr);
        m_folder = name;
        m_options.memory = kMuch;
        m_options.output.name = Path("run.kxseq");
    }
    void TearDown() override { std::filesystem::remove_all(m_folder); }

    std::string Path(const char* name) const { return (m_folder / name).string(); }
    // So many images, each filled with its number.
    void Record(Recorder& recorder, int count, size_t width = 50) const
    {
        for (int i = 0; i < count; ++i) {
            FakeStreamImage image(width, 10, KxPixelFormat_Mono8, i);
            image.frameId = image.timestampNs = static_cast<uint64_t>(i);
            recorder.Add(image);
        }
    }

    const CKxApiAutoInitTerm m_sdk;
    std::filesystem::path m_folder;
    RecordingOptions m_options;
};

TEST_F(Recording, ASequenceComesBackAsItWas)
{
    const EKxPixelFormatNamingConvention_t formats[] = {KxPixelFormat_Mono8, KxPixelFormat_BayerRG12p,
                                                        KxPixelFormat_YUV420_8_Planar};
    ImagePool pool(kMuch, 0);
    std::vector<StoredImagePtr> images;
    SequenceWriter writer(Path("run.kxseq"));
    for (const auto format : formats) {
        FakeStreamImage image(38, 12, format, 0x5A);
        image.frameId = 7;
        image.timestampNs = uint64_t{1} << 40;
        image.isIncomplete = true;
        images.push_back(pool.Copy(image));
        writer.Add(*images.back());
    }
    writer.Finish();

    const SequenceReader reader(Path("run.kxseq"));
    EXPECT_TRUE(reader.IsComplete());
    ASSERT_EQ(reader.Count(), images.size());
    const CKxAutoPtr<IKxImageBufferReleasable, IKxImageBuffer> buffer(CreateIKxImageBuffer(nullptr));
    for (size_t i = 0; i < images.size(); ++i) {
        const SequenceReader::Entry entry = reader.About(i);
        EXPECT_EQ(entry.pixelFormat, formats[i]);
        EXPECT_EQ(entry.notes.frameId, 7U);
        EXPECT_EQ(entry.notes.timestampNs, uint64_t{1} << 40);
        EXPECT_EQ(entry.notes.hostNs, images[i]->Notes().hostNs);
        EXPECT_TRUE(entry.notes.isIncomplete);
        reader.Read(i, *buffer);
        IKxImage& image = *buffer->GetIKxImage();
        EXPECT_EQ(image.GetImageLinePitch(), images[i]->Image().GetImageLinePitch());
        EXPECT_EQ(std::memcmp(image.GetImageBuffer(), images[i]->Data(), images[i]->Size()), 0) << i;
    }
    EXPECT_THROW(reader.About(images.size()), GenICam::OutOfRangeException);
}

TEST_F(Recording, WhatIsLeftOfASequenceCanBeRead)
{
    Recorder recorder(m_options);
    Record(recorder, 5);
    recorder.Stop();
    ASSERT_TRUE(recorder.WaitFor(kLong));
    const CKxAutoPtr<IKxImageBufferReleasable, IKxImageBuffer> buffer(CreateIKxImageBuffer(nullptr));
    std::ifstream file(Path("run.kxseq"), std::ios::binary);
    const std::string whole{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    size_t last = 0;
    for (size_t size = 64; size < whole.size(); ++size) {
        std::string bytes = whole.substr(0, size);
        const auto source = [&bytes](uint64_t offset, void* data, size_t count) {
            return offset < bytes.size() ? bytes.copy(static_cast<char*>(data), count, offset) : 0;
        };
        const SequenceReader reader(source, bytes.size(), "cut");
        EXPECT_FALSE(reader.IsComplete());
        ASSERT_THAT(reader.Count(), testing::AnyOf(last, last + 1)) << size;
        last = reader.Count();
        if (last > 0)
            reader.Read(last - 1, *buffer);
    }
    EXPECT_EQ(last, 5U);

    std::string damaged = whole;
    damaged[64 + 128] ^= 1; // a pixel of the first image
    std::ofstream(Path("damaged.kxseq"), std::ios::binary) << damaged;
    const SequenceReader reader(Path("damaged.kxseq"));
    EXPECT_EQ(reader.Count(), 5U);
    EXPECT_THROW(reader.Read(0, *buffer), GenICam::RuntimeException);
    reader.Read(1, *buffer);
    EXPECT_THROW(SequenceReader(Path("nowhere.kxseq")), GenICam::GenericException);
}

TEST_F(Recording, WhatTheQueueCannotTakeIsCountedAndTold)
{
    m_options.memory = 100; // less than an image
    Recorder recorder(m_options);
    Record(recorder, 3);
    FakeStreamImage chunksAlone;
    EXPECT_FALSE(recorder.Add(chunksAlone));
    recorder.Stop();
    ASSERT_TRUE(recorder.WaitFor(kLong));
    const RecordingStatus status = recorder.Status();
    EXPECT_EQ(status.state, RecordingState::Done);
    EXPECT_EQ(status.come, 4U);
    EXPECT_EQ(status.lost, 3U);
    EXPECT_EQ(status.empty, 1U);
    EXPECT_THAT(status.Cause(), AllOf(HasSubstr("run.kxseq"), HasSubstr("MB/s")));
    EXPECT_THAT(status.Report(), HasSubstr("3 lost"));
    EXPECT_EQ(SequenceReader(Path("run.kxseq")).Count(), 0U);
}

TEST_F(Recording, AFullDiskEndsItAndLeavesWhatWasWritten)
{
    RecordingStatus status;
    {
        const KxTest::FullDisk disk(100000);
        Recorder recorder(m_options);
        Record(recorder, 200, 1000);
        ASSERT_TRUE(recorder.WaitFor(kLong));
        status = recorder.Status();
        Record(recorder, 1); // nothing is recorded any more
        EXPECT_EQ(recorder.Status().come, status.come);
    }
    EXPECT_EQ(status.state, RecordingState::Failed);
    EXPECT_THAT(status.error, AllOf(HasSubstr("run.kxseq"), HasSubstr("large")));
    EXPECT_EQ(status.written, 9U);
    EXPECT_EQ(status.lost, status.come - status.written);
    EXPECT_EQ(SequenceReader(Path("run.kxseq")).Count(), status.written);
}

TEST_F(Recording, SequencesOfFilesAreWrittenSideBySideUpToALimit)
{
    m_options.output = {Path("f-%02d.png"), "", false, 4};
    m_options.maxImages = 12;
    Recorder recorder(m_options);
    Record(recorder, 20);
    ASSERT_TRUE(recorder.WaitFor(kLong)); // the limit ends it
    EXPECT_EQ(recorder.Status().written, 12U);
    EXPECT_EQ(recorder.Status().state, RecordingState::Done);
    EXPECT_TRUE(std::filesystem::exists(Path("f-11.png")));
    EXPECT_FALSE(std::filesystem::exists(Path("f-12.png")));
}

TEST_F(Recording, TheRingKeepsTheLastSecondsAsFarAsMemoryGoes)
{
    const auto fill = [](ImageRing& ring) {
        for (uint64_t i = 0; i < 100; ++i) {
            FakeStreamImage image(100, 10, KxPixelFormat_Mono8, static_cast<int>(i));
            image.frameId = i;
            image.timestampNs = (i + 1) * 10000000; // 100 a second
            ring.Add(image);
        }
    };
    ImageRing ring(0.5, kMuch, 1000);
    fill(ring);
    EXPECT_EQ(ring.GetFill().images, 51U);
    EXPECT_DOUBLE_EQ(ring.GetFill().seconds, 0.5);
    EXPECT_FALSE(ring.GetFill().isShort);
    EXPECT_EQ(ring.Images().front()->Notes().frameId, 49U);

    ring.Hold();
    fill(ring); // has begun anew: nothing of it is taken
    Recorder recorder(m_options);
    for (const StoredImagePtr& image : ring.Images())
        recorder.Add(image);
    recorder.Stop();
    ASSERT_TRUE(recorder.WaitFor(kLong));
    EXPECT_EQ(SequenceReader(Path("run.kxseq")).About(50).notes.frameId, 99U);

    ImageRing small(0.5, 10000, 0);
    fill(small);
    EXPECT_EQ(small.GetFill().images, 10U);
    EXPECT_TRUE(small.GetFill().isShort);
    EXPECT_EQ(small.Images().back()->Notes().frameId, 99U);
}

} // namespace
