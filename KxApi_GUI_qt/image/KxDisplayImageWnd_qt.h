// SPDX-License-Identifier: Apache-2.0
// The image window.
#pragma once

#include "frame/KxBaseWnd_qt.h"
#include "frame/WndInfo_qt.h"
#include "image/DisplayImagePartDlg_qt.h"
#include "image/ICDisplayImageDlgParent.h"
#include "image/ImagePreview_qt.h"
#include "image/ImageSaver_qt.h"

#include <atomic>

namespace KxApi
{

/// The model of the image window: keeps the settings, and brings images, previews, dialog and files together.
/// A setting has a public SetX, and an mSetX whose flag asks to invalidate the node: a write
/// that comes from the node map must not run back into it.
class CKxDisplayImageWnd final
    : public CKxBaseWnd<IKxImageDisplayWndInside, ICDisplayImageDlgParent, CDisplayImagePartDlg>
{
    using Base = CKxBaseWnd<IKxImageDisplayWndInside, ICDisplayImageDlgParent, CDisplayImagePartDlg>;

public:
    static constexpr _EKxWindowType_t kWndType = KxWindowType_ImageDisplay;
    static constexpr const char* kWndName = "Image display";

    /// @param pAllocator source of the images' memory, not owned; null for the process's own. Raises what
    /// CreateIKxImageBuffer and CreateIKxConverter raise.
    explicit CKxDisplayImageWnd(IKxAllocator* pAllocator);
    ~CKxDisplayImageWnd() override;

    static const char* SourceFile() noexcept { return KXGC_SOURCE_FILE; }

    const IKxWndInfo* GetIKxWndInfo() const override { return &m_objWndInfo; }

    void RegisterIKxImage(IKxImage* pIKxImage) override;
    bool HasImage() const override { return m_objPreview.HasImage(); }
    IKxImage* GetRegisteredIKxImage() override { return m_objPreview.GetRegistered(); }
    IKxImage* GetConvertedIKxImage() override { return m_objPreview.GetConverted(); }
    void ScreenToImage(int* pX, int* pY) override;

    IKxPixelFormatConverter* GetIKxPixelFormatConverter() const override { return &m_objPreview.Converter(); }
    _EKxPreviewPixelFormatMode_t GetPreviewPixelFormatMode() const override
    {
        return m_ePreviewPixelFormatMode;
    }
    void SetPreviewPixelFormatMode(_EKxPreviewPixelFormatMode_t eMode) override;
    int GetScrollHMax() const override;
    int GetScrollHPosition() const override;
    void SetScrollHPosition(int nPosition) override;
    int GetScrollVMax() const override;
    int GetScrollVPosition() const override;
    void SetScrollVPosition(int nPosition) override;
    uint32_t GetRefreshInterval() const override { return m_nRefreshInterval; }
    void SetRefreshInterval(uint32_t nInterval) override;
    _EKxZoomMode_t GetZoomMode() const override { return m_eZoomMode; }
    void SetZoomMode(_EKxZoomMode_t eZoomMode) override;
    double GetManualZoomMagnification() const override { return m_dManualZoomMagnification; }
    void SetManualZoomMagnification(double dMagnification) override;
    _EKxBackgroundStyle_t GetBackgroundStyle() const override { return m_eBackgroundStyle; }
    void SetBackgroundStyle(_EKxBackgroundStyle_t eStyle) override;
    uint32_t GetForegroundColor() const override { return m_nForegroundColor; }
    void SetForegroundColor(uint32_t nColor) override;
    uint32_t GetBackgroundColor() const override { return m_nBackgroundColor; }
    void SetBackgroundColor(uint32_t nColor) override;
    bool GetBuiltInDrawingToolbar() const override { return m_regShowBuiltInDrawingToolbar.GetValue(); }
    void SetBuiltInDrawingToolbar(bool bShow) override;
    bool GetEnableDrawingOnSavingImage() const override { return m_regEnableDrawingOnSavingImage.GetValue(); }
    void SetEnableDrawingOnSavingImage(bool bEnable) override;
    EKxBayerInterpolationMethod_t GetStretchMode() const override { return m_eStretchMode; }
    void SetStretchMode(EKxBayerInterpolationMethod_t eStretchMode) override;
    _EKxBayerInterpolationMethodForStillImageFile_t
    GetBayerInterpolationMethodForStillImageFile() const override
    {
        return m_eBayerInterpolationMethodForStillImageFile;
    }
    void SetBayerInterpolationMethodForStillImageFile(
        _EKxBayerInterpolationMethodForStillImageFile_t eMethod) override;
    EKxColorMapType_t GetColorMapType() const override { return m_eColorMapType; }
    void SetColorMapType(EKxColorMapType_t eType) override;
    bool GetColorMapInversion() const override { return m_bColorMapInversion; }
    void SetColorMapInversion(bool bInversion) override;
    int GetColorMapPhase() const override { return m_nColorMapPhase; }
    void SetColorMapPhase(int nPhase) override;

    /// There is no drawing tool yet.
    IKxDrawingToolInside* GetIKxDrawingToolInside() override { return nullptr; }

    void GetStatusBarText(QStringList& listText) override;
    bool mRead(unsigned char* pBuffer, int64_t nAddress, int64_t* pnLength) override;
    bool mWrite(const unsigned char* pBuffer, int64_t nAddress, int64_t* pnLength) override;
    IKxImageDisplayWndInside* GetIKxImageDisplayWndInside() override { return this; }
    void RunOverlay(COverlayParam* pParam) override;
    IKxImageBufferReleasable* GetPreviewImage(unsigned char bForApplication) override
    {
        return m_objPreview.Get(bForApplication ? CImagePreview::Api : CImagePreview::Widget);
    }
    void OnScrollPosOrRangeChanged() override;
    void SaveImage(bool bPreview) override;

    void mSetPreviewPixelFormatMode(_EKxPreviewPixelFormatMode_t eMode, bool bInvalidate);
    void mSetScrollHPosition(int nPosition, bool bInvalidate);
    void mSetScrollVPosition(int nPosition, bool bInvalidate);
    void mSetRefreshInterval(uint32_t nInterval, bool bInvalidate);
    void mSetZoomMode(_EKxZoomMode_t eZoomMode, bool bInvalidate);
    void mSetManualZoomMagnification(double dMagnification, bool bInvalidate);
    void mSetBackgroundStyle(_EKxBackgroundStyle_t eStyle, bool bInvalidate);
    void mSetForegroundColor(uint32_t nColor, bool bInvalidate);
    void mSetBackgroundColor(uint32_t nColor, bool bInvalidate);
    void mSetStretchMode(EKxBayerInterpolationMethod_t eStretchMode, bool bInvalidate);
    void
    mSetBayerInterpolationMethodForStillImageFile(_EKxBayerInterpolationMethodForStillImageFile_t eMethod,
                                                  bool bInvalidate);
    void mSetColorMapType(EKxColorMapType_t eType, bool bInvalidate);
    void mSetColorMapInversion(bool bInversion, bool bInvalidate);
    void mSetColorMapPhase(int nPhase, bool bInvalidate);

private:
    using RegisterBool =
        CRegisterParamNumeric<CKxDisplayImageWnd, void (CKxDisplayImageWnd::*)(), bool, unsigned int>;

    enum EImageUpdate : uint32_t
    {
        UpdateScrollH = UpdateFirstOfWindow << 0,
        UpdateScrollV = UpdateFirstOfWindow << 1,
        // These only while the dialog is visible, since it reads all when it is shown.
        UpdateInterval = UpdateFirstOfWindow << 2,
        UpdateZoomMenu = UpdateFirstOfWindow << 3,
        UpdateSize = UpdateFirstOfWindow << 4,
        UpdateBayerMenu = UpdateFirstOfWindow << 5,
        UpdateReverseYMenu = UpdateFirstOfWindow << 6,
        UpdateBackground = UpdateFirstOfWindow << 7,
        UpdateDrawingToolBar = UpdateFirstOfWindow << 8,
        UpdatePicture = UpdateFirstOfWindow << 9,
    };
    void OnUpdateDialog(CDisplayImagePartDlg& dialog, uint32_t nKinds) override;
    /// A scroll bar's position, or the one that it is about to have.
    int ScrollPosition(uint32_t nKind, const std::atomic<int>& nWanted,
                       int (CDisplayImagePartDlg::*get)() const,
                       int (CDisplayImagePartDlg::*getMax)() const) const;
    void OnVisibleDrawingToolBar();

    void OnConverterChanged(const GenICam::gcstring& strNode);

    static const CWndInfo<CKxDisplayImageWnd> m_objWndInfo;

    std::atomic<_EKxZoomMode_t> m_eZoomMode{KxZoomMode_FixedZoom};
    std::atomic<EKxBayerInterpolationMethod_t> m_eStretchMode{KxBayerInterpolationMethod_NearestNeighbor};
    std::atomic<EKxColorMapType_t> m_eColorMapType{KxColorMapType_Normal};
    std::atomic<bool> m_bColorMapInversion{false};
    std::atomic<int> m_nColorMapPhase{0};
    std::atomic<double> m_dManualZoomMagnification{1.0};
    std::atomic<_EKxBackgroundStyle_t> m_eBackgroundStyle{KxBackgroundStyle_DiagCross};
    std::atomic<uint32_t> m_nForegroundColor{0x00C0C0C0};
    std::atomic<uint32_t> m_nBackgroundColor{0x00FFFFFF};
    std::atomic<_EKxBayerInterpolationMethodForStillImageFile_t> m_eBayerInterpolationMethodForStillImageFile{
        KxBayerInterpolationMethodForStillImageFile_Auto};
    std::atomic<_EKxPreviewPixelFormatMode_t> m_ePreviewPixelFormatMode{KxPreviewPixelFormatMode_Auto};
    std::atomic<uint32_t> m_nRefreshInterval{33};
    RegisterBool m_regShowBuiltInDrawingToolbar;
    RegisterBool m_regEnableDrawingOnSavingImage;

    // What UpdateScrollH and UpdateScrollV bring to the scroll bars.
    std::atomic<int> m_nWantedScrollH{0};
    std::atomic<int> m_nWantedScrollV{0};

    CImagePreview m_objPreview;
    CImageSaver m_objSaver; // GUI thread
};

} // namespace KxApi
