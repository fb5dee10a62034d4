// SPDX-License-Identifier: Apache-2.0
// Saving images from the image window, and the clipboard.
#include "FullDisk.h"
#include "Support.h"
#include "image/KxDisplayImageWnd_qt.h"
#include "image/StillImageSave_qt.h"

#include <KxApi_GUI/IKxDrawingTool.h>

#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFileDialog>
#include <QImage>
#include <QMessageBox>
#include <QTemporaryDir>

namespace KxTest
{
namespace
{

using namespace KxApi;

class SaveImages : public GuiTest
{
protected:
    using Answer = CDialogAnswers::Answer;

    void Save(bool bPreview, const std::vector<Answer>& vecAnswers)
    {
        const CDialogAnswers answers(vecAnswers);
        dynamic_cast<ICDisplayImageDlgParent&>(*m_pWnd).SaveImage(bPreview);
    }

    static Answer Press(QMessageBox::StandardButton eButton)
    {
        return [=](QWidget& dialog) { dynamic_cast<QMessageBox&>(dialog).button(eButton)->click(); };
    }

    static constexpr auto NameFile = &CDialogAnswers::NameFile;

    QTemporaryDir m_objFolder;
    const ImageWndPtr m_pWnd = MakeImageWnd();
};

TEST_F(SaveImages, NameTheFileByTheFilter)
{
    const std::vector<CSaveFileType> types = {{1, ".bmp", "Bitmap File (*.bmp)"},
                                              {3, ".kxraw", "KxRaw File (*.kxraw)"}};
    EXPECT_EQ(CompletedFileName("/x/a.BMP", "Bitmap File (*.bmp)", types).strName, "/x/a.BMP");
    EXPECT_EQ(CompletedFileName("/x/a.bmp.png", "bitmap file (*.BMP)", types).strName, "/x/a.bmp.png.bmp");
    EXPECT_EQ(CompletedFileName("/x/a", "KxRaw File (*.kxraw)", types).strName, "/x/a.kxraw");
    EXPECT_EQ(CompletedFileName("/x/a", "KxRaw File (*.kxraw)", types).nCode, 3);
    EXPECT_EQ(CompletedFileName("/x/a", "anything", types).strName, "/x/a");
    EXPECT_EQ(CompletedFileName("/x/a", "", {}).nCode, 1);
}

TEST_F(SaveImages, OfferOnlyTheTypesThatTakeTheFormat)
{
    const CKxAutoPtr<IKxFilerReleasable> pFiler(CreateIKxFiler(KxFilerType_StillImage));
    const auto extensions = [&](EKxPixelFormatNamingConvention_t eFormat) {
        std::vector<std::string> vecNames;
        for (const CSaveFileType& type : StillImageTypes(*pFiler, eFormat))
            vecNames.emplace_back(type.szExtension);
        return vecNames;
    };
    EXPECT_THAT(extensions(KxPixelFormat_Mono8),
                testing::ElementsAre(".bmp", ".jpg", ".tif", ".png", ".csv", ".kxraw"));
    EXPECT_THAT(extensions(KxPixelFormat_Mono12),
                testing::AllOf(testing::Contains(".kxraw"), testing::Not(testing::Contains(".jpg"))));
}

TEST_F(SaveImages, WriteTheRegisteredImageAndThePreview)
{
    const ImageBufferPtr pImage = MakeImage(8, 4, KxPixelFormat_BayerRG8, 0x50);
    m_pWnd->RegisterIKxImage(pImage->GetIKxImage());
    const QString strRaw = m_objFolder.filePath("raw"), strShown = m_objFolder.filePath("shown.PNG");
    Save(false, {NameFile(strRaw, "PNG File (*.png)")});
    Save(true, {NameFile(strShown, "PNG File (*.png)")});
    const QImage raw(strRaw + ".png"), shown(strShown);
    EXPECT_EQ(raw.size(), QSize(8, 4));
    EXPECT_TRUE(raw.isGrayscale());
    EXPECT_EQ(shown.size(), QSize(8, 4));
    EXPECT_EQ(shown.pixel(3, 3), 0xFF505050U);
}

TEST_F(SaveImages, AskBeforeTheCompletedNameReplacesAFile)
{
    const auto save = [&](size_t nWidth, QMessageBox::StandardButton eButton, std::vector<Answer> vecRest) {
        m_pWnd->RegisterIKxImage(MakeImage(nWidth, 4)->GetIKxImage());
        vecRest.insert(vecRest.begin(), Press(eButton));
        vecRest.insert(vecRest.begin(), NameFile(m_objFolder.filePath("a"), "PNG File (*.png)"));
        Save(false, vecRest);
        return QImage(m_objFolder.filePath("a.png")).width();
    };
    m_pWnd->RegisterIKxImage(MakeImage(8, 4)->GetIKxImage());
    Save(false, {NameFile(m_objFolder.filePath("a"), "PNG File (*.png)")});
    EXPECT_EQ(save(9, QMessageBox::No, {[](QWidget& again) { again.close(); }}), 8);
    EXPECT_EQ(save(10, QMessageBox::Yes, {}), 10);
}

TEST_F(SaveImages, KeepTheFolderWhenTheUserCancels)
{
    m_pWnd->RegisterIKxImage(MakeImage(8, 4)->GetIKxImage());
    Save(false, {NameFile(m_objFolder.filePath("a.bmp"), "Bitmap File (*.bmp)")});
    QString strFolder;
    const Answer cancel = [&](QWidget& dialog) {
        strFolder = dynamic_cast<QFileDialog&>(dialog).directory().path();
        dialog.close();
    };
    Save(false, {cancel});
    Save(false, {cancel});
    EXPECT_EQ(QDir(strFolder), QDir(m_objFolder.path()));
    EXPECT_EQ(QDir(m_objFolder.path()).entryList(QDir::Files), QStringList{"a.bmp"});
}

TEST_F(SaveImages, TellTheUserWhatFailed)
{
    QString strText;
    Save(false, {[&](QWidget& box) {
             strText = dynamic_cast<QMessageBox&>(box).text();
             box.close();
         }});
    EXPECT_TRUE(strText.startsWith("KxApi_GUI_qt/")) << strText.toStdString();
    EXPECT_TRUE(strText.endsWith("There is no available image.")) << strText.toStdString();
}

TEST_F(SaveImages, TellWhatKeepsTheDrawingFromTheDisk)
{
    m_pWnd->GetIKxDrawingTool()->SetGridVLineCount(1);
    m_pWnd->SetEnableDrawingOnSavingImage(true);
    m_pWnd->RegisterIKxImage(MakeImage(800, 600)->GetIKxImage());
    QString strText;
    const Answer read = [&](QWidget& box) {
        strText = dynamic_cast<QMessageBox&>(box).text();
        box.close();
    };
    Save(true, {NameFile("/proc/a", "Bitmap File (*.bmp)"), read});
    EXPECT_TRUE(strText.contains("/proc/a.bmp")) << strText.toStdString();

    strText.clear();
    {
        const FullDisk disk(4096);
        Save(true, {NameFile(m_objFolder.filePath("a"), "Bitmap File (*.bmp)"), read});
    }
    EXPECT_TRUE(strText.contains("a.bmp")) << strText.toStdString();
    EXPECT_TRUE(QDir(m_objFolder.path()).entryList(QDir::Files).isEmpty()) << "no half file";
}

TEST_F(SaveImages, PutTheDrawingIntoThePreviewAloneWhileImagesCome)
{
    m_pWnd->GetIKxDrawingTool()->SetGridVLineCount(1);
    m_pWnd->GetIKxDrawingTool()->SetGridLineStyle(KxLineStyle_Solid);
    m_pWnd->SetEnableDrawingOnSavingImage(true);
    m_pWnd->RegisterIKxImage(MakeImage(40, 30)->GetIKxImage());
    const CThreads camera({[&](unsigned n) {
        m_pWnd->RegisterIKxImage(MakeImage(40 + 2 * (n % 5), 30 + n % 3)->GetIKxImage());
    }});
    for (const bool bPreview : {false, true}) {
        const QString strName = m_objFolder.filePath(bPreview ? "shown.png" : "raw.png");
        Save(bPreview, {NameFile(strName, "PNG File (*.png)")});
        const QImage image(strName);
        EXPECT_EQ(image.pixel(image.width() / 2, 5), bPreview ? 0xFF406080U : 0xFF808080U);
        EXPECT_EQ(image.pixel(3, 5), 0xFF808080U);
    }
}

TEST_F(SaveImages, ConvertAsThePreviewButWithTheBetterBayerMethod)
{
    // A single red line in a mosaic comes out differently with each method.
    const ImageBufferPtr pImage = MakeImage(16, 16, KxPixelFormat_BayerRG8, 0);
    auto* const pBytes = static_cast<unsigned char*>(pImage->GetIKxImage()->GetImageBuffer());
    for (size_t i = 0; i < 256; ++i)
        pBytes[i] = static_cast<unsigned char>(i * 37);
    const auto convert = [&](EKxBayerInterpolationMethod_t eMethod, bool bReverseY) {
        const CKxAutoPtr<IKxConverterReleasable> pConverter(CreateIKxConverter(KxConverterType_PixelFormat));
        pConverter->SetDestinationPixelFormat(KxPixelFormat_RGB8);
        pConverter->SetBayerInterpolationMethod(eMethod);
        pConverter->SetReverseY(bReverseY);
        const ImageBufferPtr pTarget(CreateIKxImageBuffer(nullptr));
        pConverter->Convert(pImage->GetIKxImage(), pTarget.Get());
        const auto* const p = static_cast<const unsigned char*>(pTarget->GetIKxImage()->GetImageBuffer());
        return std::vector<unsigned char>(p, p + 3 * 256);
    };
    const auto saved = [&](const char* szName) {
        Save(true, {NameFile(m_objFolder.filePath(szName), "PNG File (*.png)")});
        const QImage image = QImage(m_objFolder.filePath(szName)).convertToFormat(QImage::Format_RGB888);
        std::vector<unsigned char> vecBytes;
        for (int y = 0; y < image.height(); ++y)
            vecBytes.insert(vecBytes.end(), image.constScanLine(y),
                            image.constScanLine(y) + 3 * image.width());
        return vecBytes;
    };
    m_pWnd->RegisterIKxImage(pImage->GetIKxImage());
    IKxPixelFormatConverter* const pPreview = m_pWnd->GetIKxPixelFormatConverter();
    pPreview->SetBayerInterpolationMethod(KxBayerInterpolationMethod_NearestNeighbor);
    pPreview->SetReverseY(true);
    m_pWnd->GetConvertedIKxImage();
    EXPECT_EQ(saved("auto.png"), convert(KxBayerInterpolationMethod_Bilinear3, true));
    m_pWnd->SetBayerInterpolationMethodForStillImageFile(KxBayerInterpolationMethodForStillImageFile_Manual);
    EXPECT_EQ(saved("manual.png"), convert(KxBayerInterpolationMethod_NearestNeighbor, true));
}

TEST_F(SaveImages, PutImagesOnTheClipboard)
{
    SetIKxImageToClipboard(nullptr);
    for (const size_t nWidth : {1000U, 1001U}) {
        const ImageBufferPtr pImage = MakeImage(nWidth, 3, KxPixelFormat_Mono8, 0x30);
        SetIKxImageToClipboard(pImage->GetIKxImage());
        const QImage image = QGuiApplication::clipboard()->image();
        EXPECT_EQ(image.size(), QSize(static_cast<int>(nWidth), 3));
        EXPECT_EQ(image.pixel(500, 2), 0xFF303030U);
    }
    const ImageBufferPtr pRed = MakeImage(4, 1, KxPixelFormat_BGR8, 0);
    static_cast<unsigned char*>(pRed->GetIKxImage()->GetImageBuffer())[2] = 0xFF;
    SetIKxImageToClipboard(pRed->GetIKxImage());
    EXPECT_EQ(QGuiApplication::clipboard()->image().pixel(0, 0), 0xFF0000FFU) << "red and blue change places";
}

} // namespace
} // namespace KxTest
