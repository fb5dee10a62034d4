// SPDX-License-Identifier: Apache-2.0
// Recording as the viewer's user does it: into a file, and out of the ring after the fact.
#include "CameraRecording.h"
#include "MainWindowFixture.h"
#include "RingPanel.h"
#include "SequenceReader.h"

#include <KxApi_TL/KxApi_TL.h>

#include <QAbstractButton>
#include <QDir>
#include <QDockWidget>
#include <cstring>

namespace KxTest
{
namespace
{

class RecordingDockTest : public MainWindowTest
{
protected:
    void SetUp() override
    {
        MainWindowTest::SetUp();
        ViewerSettings().setValue("recording/folder", Folder().path());
        MakeWindow();
        m_pDock = m_pWindow->findChild<QDockWidget*>("recording");
        m_pDock->show();
        m_pDock->raise();
    }
    QDir Folder() const { return {m_folder.filePath("recordings")}; }
    /// Presses a button of the dock, by its text or accessible name, as soon as it can be.
    void Press(const char* szName) const
    {
        for (QAbstractButton* const pButton : m_pDock->findChildren<QAbstractButton*>()) {
            if (pButton->text() != szName && pButton->accessibleName() != szName)
                continue;
            ASSERT_TRUE(QTest::qWaitFor([&] { return pButton->isEnabled(); }, kTimeoutMs)) << szName;
            return pButton->click();
        }
        FAIL() << "no such button: " << szName;
    }
    static bool IsDone(const CameraRecording& recording)
    {
        return QTest::qWaitFor([&] { return !recording.IsBusy(); }, kTimeoutMs);
    }
    /// Checks that the only file in the folder holds so many whole images of the camera, in their order.
    void ExpectFile(uint64_t nImages) const
    {
        const QStringList files = Folder().entryList(QDir::Files);
        ASSERT_EQ(files.size(), 1);
        const KxApps::SequenceReader reader(Folder().filePath(files.front()).toStdString());
        EXPECT_TRUE(reader.IsComplete());
        ASSERT_EQ(reader.Count(), nImages);
        CKxAutoPtr<IKxImageBufferReleasable, IKxImageBuffer> pBuffer(CreateIKxImageBuffer(nullptr));
        for (size_t i = 0; i < reader.Count(); ++i) {
            reader.Read(i, *pBuffer);
            EXPECT_EQ(pBuffer->GetIKxImage()->GetImageWidth(), 640U);
            if (i > 0) {
                EXPECT_GT(reader.About(i).notes.frameId, reader.About(i - 1).notes.frameId);
            }
        }
    }

    QDockWidget* m_pDock = nullptr;
};

TEST_F(RecordingDockTest, RecordsUntilItIsStopped)
{
    CameraView& view = Open();
    const CameraRecording& recording = CameraRecording::Of(view);
    Do("start");
    Press("Record");
    ASSERT_NE(recording.GetRecorder(), nullptr);
    EXPECT_TRUE(QTest::qWaitFor([&] { return recording.GetRecorder()->Status().written >= 3; }, kTimeoutMs));
    Press("Record");
    ASSERT_TRUE(IsDone(recording));
    EXPECT_EQ(recording.GetRecorder()->Status().Cause(), "");
    EXPECT_TRUE(view.Session()->IsAcquiring());
    ExpectFile(recording.GetRecorder()->Status().written);
}

TEST_F(RecordingDockTest, HoldsStepsThroughAndSavesTheLastImages)
{
    CameraView& view = Open();
    const CameraRecording& recording = CameraRecording::Of(view);
    m_pDock->findChild<RingPanel*>()->setChecked(true);
    Do("start");
    ASSERT_TRUE(QTest::qWaitFor([&] { return recording.Ring()->GetFill().images >= 3; }, kTimeoutMs));
    Press("Look at them");
    const std::vector<KxApps::StoredImagePtr> images = recording.Ring()->Images();
    const auto isShown = [&](size_t nFromEnd) {
        const KxApps::StoredImage& image = **(images.end() - static_cast<ptrdiff_t>(nFromEnd));
        return std::memcmp(view.Window().GetRegisteredIKxImage()->GetImageBuffer(), image.Data(),
                           image.Size()) == 0;
    };
    EXPECT_TRUE(isShown(1));
    Press("One image back");
    EXPECT_TRUE(isShown(2));
    EXPECT_FALSE(isShown(1)); // so that the images differ
    Press("One image back");
    Press("One image forward");
    EXPECT_TRUE(isShown(2));
    Press("Save them");
    ASSERT_TRUE(IsDone(recording));
    ExpectFile(images.size());
    Press("Look at them"); // no more: the live image goes on
    EXPECT_TRUE(QTest::qWaitFor([&] { return !isShown(2) && !isShown(1); }, kTimeoutMs));
}

} // namespace
} // namespace KxTest
