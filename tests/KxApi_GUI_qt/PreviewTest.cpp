// SPDX-License-Identifier: Apache-2.0
// What the image window does with the images that it is given.
#include "FakeImage.h"
#include "Support.h"
#include "frame/RoleRing_qt.h"
#include "image/KxDisplayImageWnd_qt.h"
#include "image/PixelText_qt.h"

#include <KxApi_TL/IKxPixelFormatInfo.h>

#include <gmock/gmock.h>

#include <set>

namespace KxTest
{
namespace
{

using namespace KxApi;
using ::testing::StartsWith;

constexpr const char* kNoImage = "There is no available image.";

class Preview : public GuiTest
{
protected:
    Preview()
        : m_pWnd(MakeImageWnd())
        , m_pDlgParent(dynamic_cast<ICDisplayImageDlgParent*>(&*m_pWnd))
        , m_pConverter(m_pWnd->GetIKxPixelFormatConverter())
    {}

    void Register(const ImageBufferPtr& pBuffer) { m_pWnd->RegisterIKxImage(pBuffer->GetIKxImage()); }
    /// What the widget is given.
    IKxImageBufferReleasable* WidgetPreview() { return m_pDlgParent->GetPreviewImage(0); }
    static unsigned char FirstByte(IKxImage* pImage)
    {
        return *static_cast<const unsigned char*>(pImage->GetImageBuffer());
    }
    QString StatusText()
    {
        QStringList listTexts;
        m_pDlgParent->GetStatusBarText(listTexts);
        return listTexts.value(1);
    }

    const ImageWndPtr m_pWnd;
    ICDisplayImageDlgParent* const m_pDlgParent;
    IKxPixelFormatConverter* const m_pConverter;
};

TEST(RoleRing, NeverHandsOutABufferThatAGuardedRoleNames)
{
    const CKxApiAutoInitTerm sdk;
    CRoleRing<IKxImageBufferReleasable, 3, 4, 3> ring([] { return CreateIKxImageBuffer(nullptr); });
    EXPECT_EQ(ring.Buffer(ring.Index(2)), nullptr);
    std::set<int32_t> setUsed;
    for (size_t nRole = 0; nRole < 3; ++nRole)
        EXPECT_TRUE(setUsed.insert(ring.Claim(nRole)).second);
    EXPECT_EQ(ring.Claim(1), ring.Index(1)) << "all in use: the role keeps its own";
    const int32_t nFreed = ring.Move(2, 3);
    EXPECT_EQ(ring.Claim(0), nFreed) << "role 3 guards nothing";
}

TEST_F(Preview, SaysThatThereIsNoImageYet)
{
    EXPECT_FALSE(m_pWnd->HasImage());
    EXPECT_EQ(ErrorOf([this] { m_pWnd->GetRegisteredIKxImage(); }), kNoImage);
    EXPECT_EQ(ErrorOf([this] { m_pWnd->GetConvertedIKxImage(); }), kNoImage);
    EXPECT_EQ(WidgetPreview(), nullptr);
    EXPECT_EQ(ErrorOf([this] { m_pWnd->RegisterIKxImage(nullptr); }), "IKxImage pointer is NULL");
    int x = 17, y = 4;
    m_pWnd->ScreenToImage(&x, &y);
    EXPECT_EQ(x, 0);
    EXPECT_EQ(y, 0);
}

TEST_F(Preview, RefusesImagesThatCannotBeCopied)
{
    FakeImageOf<IKxImage> foreign(KxPixelFormat_Mono8, 1, 1, 1, {7}); // of an application's own class
    EXPECT_THROW(m_pWnd->RegisterIKxImage(&foreign), GenICam::InvalidArgumentException);
    FakeImage unknown(static_cast<EKxPixelFormatNamingConvention_t>(0x01234567), 1, 1, 1, {7});
    EXPECT_EQ(ErrorOf([&] { m_pWnd->RegisterIKxImage(&unknown); }),
              "Pixel format 0x01234567 of the image is unknown");
    EXPECT_FALSE(m_pWnd->HasImage());
}

TEST_F(Preview, SharesTheImageWhenTheScreenTakesItAsItIs)
{
    for (const auto ePixelFormat : {KxPixelFormat_Mono8, KxPixelFormat_BGR8, KxPixelFormat_BGRa8}) {
        for (const size_t nWidth : {1000U, 1002U, 1U}) {
            const ImageBufferPtr pImage = MakeImage(nWidth, 2, ePixelFormat);
            Register(pImage);
            const bool bShared = WidgetPreview()->GetIKxImage() == m_pWnd->GetRegisteredIKxImage();
            EXPECT_EQ(bShared, pImage->GetIKxImage()->GetImageLinePitch() % 4 == 0)
                << nWidth << " of format " << ePixelFormat;
            EXPECT_EQ(WidgetPreview()->GetIKxImage()->GetImageWidth(), nWidth);
        }
    }
}

TEST_F(Preview, ConvertsToGreyOrColourByTheImage)
{
    const std::pair<EKxPixelFormatNamingConvention_t, EKxPixelFormatNamingConvention_t> cases[] = {
        {KxPixelFormat_Mono12, KxPixelFormat_Mono8},
        {KxPixelFormat_BayerRG8, KxPixelFormat_RGB8},
        {KxPixelFormat_RGB8, KxPixelFormat_RGB8},
        {KxPixelFormat_YUV422_8, KxPixelFormat_RGB8},
    };
    for (const auto& [eSource, eShown] : cases) {
        Register(MakeImage(16, 16, eSource));
        EXPECT_EQ(m_pWnd->GetConvertedIKxImage()->GetImagePixelFormat(), eShown);
    }
}

TEST_F(Preview, ConvertsOnceForEachImageAndEachChange)
{
    Register(MakeImage(16, 16, KxPixelFormat_BayerRG8));
    IKxImageBufferReleasable* pShown = WidgetPreview();
    EXPECT_EQ(WidgetPreview(), pShown);
    EXPECT_EQ(m_pDlgParent->GetPreviewImage(1), pShown);

    const auto expectNew = [&](const char* szChange) {
        IKxImageBufferReleasable* const pNew = WidgetPreview();
        EXPECT_NE(pNew, pShown) << szChange;
        EXPECT_EQ(WidgetPreview(), pNew) << szChange;
        pShown = pNew;
    };
    // One of each kind; the table of nodes is checked when a window is made.
    const std::pair<const char*, const char*> changes[] = {
        {"DestinationPixelFormat", "BGR8"}, {"ReverseY", "true"}, {"Gamma", "0.5"}, {"ColorMapPhase", "9"}};
    for (const auto& [szNode, szValue] : changes) {
        const GenApi::CValuePtr pNode(m_pConverter->GetINodeMap()->GetNode(szNode));
        ASSERT_TRUE(pNode.IsValid()) << szNode;
        pNode->FromString(szValue);
        expectNew(szNode);
    }
    m_pWnd->SetStretchMode(KxBayerInterpolationMethod_Bilinear);
    expectNew("stretch mode");
    m_pWnd->SetColorMapPhase(3);
    EXPECT_EQ(WidgetPreview(), pShown) << "the widget's colour map doesn't change the preview";
}

TEST_F(Preview, LeavesTheDestinationToTheApplicationInManualMode)
{
    m_pWnd->SetPreviewPixelFormatMode(KxPreviewPixelFormatMode_Manual);
    m_pConverter->SetDestinationPixelFormat(KxPixelFormat_BGR8);
    Register(MakeImage(16, 16, KxPixelFormat_Mono8));
    EXPECT_EQ(m_pWnd->GetConvertedIKxImage()->GetImagePixelFormat(), KxPixelFormat_BGR8);
    m_pConverter->SetDestinationPixelFormat(KxPixelFormat_Mono8);
    EXPECT_EQ(m_pWnd->GetConvertedIKxImage(), m_pWnd->GetRegisteredIKxImage());
    m_pWnd->SetPreviewPixelFormatMode(KxPreviewPixelFormatMode_Auto);
    Register(MakeImage(16, 16, KxPixelFormat_RGB8));
    EXPECT_EQ(m_pWnd->GetConvertedIKxImage()->GetImagePixelFormat(), KxPixelFormat_RGB8);
}

TEST_F(Preview, LeavesImagesAloneThatSomebodyHolds)
{
    Register(MakeImage(8, 8, KxPixelFormat_Mono8, 1));
    IKxImage* const pRaw = m_pWnd->GetRegisteredIKxImage();
    Register(MakeImage(8, 8, KxPixelFormat_Mono16, 2));
    IKxImage* const pConverted = m_pWnd->GetConvertedIKxImage();
    Register(MakeImage(8, 8, KxPixelFormat_Mono8, 3));
    IKxImage* const pWidget = WidgetPreview()->GetIKxImage();
    for (int i = 0; i < 50; ++i) {
        Register(MakeImage(8, 8, KxPixelFormat_Mono8, 4));
        StatusText();
    }
    EXPECT_EQ(FirstByte(pRaw), 1);
    EXPECT_EQ(FirstByte(pConverted), 2);
    EXPECT_EQ(FirstByte(pWidget), 3);
    EXPECT_EQ(FirstByte(m_pWnd->GetRegisteredIKxImage()), 4);
}

TEST_F(Preview, GoesOnAfterAnImageThatCannotBeConverted)
{
    Register(MakeImage(8, 8, KxPixelFormat_Data32, 0));
    EXPECT_THROW(WidgetPreview(), GenICam::GenericException);
    EXPECT_EQ(ErrorOf([this] { m_pWnd->GetConvertedIKxImage(); }), kNoImage);
    EXPECT_EQ(StatusText().toStdString(), "(   0,    0)  Data32   0");
    EXPECT_EQ(m_pWnd->GetRegisteredIKxImage()->GetImagePixelFormat(), KxPixelFormat_Data32);
    for (int i = 0; i < 20; ++i)
        EXPECT_THROW(WidgetPreview(), GenICam::GenericException);
    Register(MakeImage(8, 8));
    EXPECT_NE(WidgetPreview(), nullptr);
}

TEST_F(Preview, TellsThePixelUnderTheCursorInBothFormats)
{
    QStringList listTexts;
    m_pWnd->SetUserStatusBarText("Kamera \xC3\xBC");
    m_pDlgParent->GetStatusBarText(listTexts);
    EXPECT_EQ(listTexts, QStringList{QString::fromUtf8("Kamera \xC3\xBC")});
    Register(MakeImage(8, 8));
    EXPECT_EQ(StatusText().toStdString(), "(   0,    0)  Mono8 128");
    Register(MakeImage(8, 8, KxPixelFormat_BayerRG8));
    EXPECT_EQ(StatusText().toStdString(), "(   0,    0)  BayerRG8:R= 128 -> RGB8:R= 128,G= 128,B= 128");
    Register(MakeImage(8, 8, KxPixelFormat_Mono16, 0xFF));
    EXPECT_EQ(StatusText().toStdString(), "(   0,    0)  Mono1665535 -> Mono8 255");
    CImagePreview preview(nullptr, [](const GenICam::gcstring&) {});
    preview.Register(MakeImage(8, 8, KxPixelFormat_Mono16)->GetIKxImage());
    EXPECT_EQ(PixelText(preview, 9, 3).toStdString(), "(   9,    3)  Mono16 -> Mono8")
        << "what is known stays, though there are no values";
}

} // namespace
} // namespace KxTest
