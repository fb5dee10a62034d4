// SPDX-License-Identifier: Apache-2.0
// The image window.
#pragma once

#include "drawing/KxDrawingTool_qt.h"
#include "frame/KxBaseWnd_qt.h"
#include "frame/ScrollBarState_qt.h"
#include "frame/WndInfo_qt.h"
#include "image/DisplayImagePartDlg_qt.h"
#include "image/ICDisplayImageDlgParent.h"
#include "image/ImagePreview_qt.h"
#include "image/ImageSaver_qt.h"

namespace KxApi
{

/// The model of the image window: keeps the settings, each of which is a register with its row, and brings
/// images, previews, dialog and files together.
class CKxDisplayImageWnd final
    : public CKxBaseWnd<IKxImageDisplayWndInside, ICDisplayImageDlgParent, CDisplayImagePartDlg>,
      private IKxDrawingHost
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
    void SetPreviewPixelFormatMode(_EKxPreviewPixelFormatMode_t e) override
    {
        m_ePreviewPixelFormatMode.Set(e);
    }
    int GetScrollHMax() const override { return m_pPartDlg ? m_objScrollH.nMax.load() : 0; }
    int GetScrollHPosition() const override
    {
        return m_pPartDlg ? m_objScrollH.Get(IsUpdateWaiting(UpdateScrollH)) : 0;
    }
    void SetScrollHPosition(int nPosition) override { m_regScrollH.Set(nPosition); }
    int GetScrollVMax() const override { return m_pPartDlg ? m_objScrollV.nMax.load() : 0; }
    int GetScrollVPosition() const override
    {
        return m_pPartDlg ? m_objScrollV.Get(IsUpdateWaiting(UpdateScrollV)) : 0;
    }
    void SetScrollVPosition(int nPosition) override { m_regScrollV.Set(nPosition); }
    uint32_t GetRefreshInterval() const override { return m_nRefreshInterval; }
    void SetRefreshInterval(uint32_t nInterval) override { m_nRefreshInterval.Set(nInterval); }
    _EKxZoomMode_t GetZoomMode() const override { return m_eZoomMode; }
    void SetZoomMode(_EKxZoomMode_t eZoomMode) override { m_eZoomMode.Set(eZoomMode); }
    double GetManualZoomMagnification() const override { return m_dManualZoomMagnification; }
    void SetManualZoomMagnification(double d) override { m_dManualZoomMagnification.Set(d); }
    _EKxBackgroundStyle_t GetBackgroundStyle() const override { return m_eBackgroundStyle; }
    void SetBackgroundStyle(_EKxBackgroundStyle_t eStyle) override { m_eBackgroundStyle.Set(eStyle); }
    uint32_t GetForegroundColor() const override { return m_nForegroundColor; }
    void SetForegroundColor(uint32_t nColor) override { m_nForegroundColor.Set(nColor); }
    uint32_t GetBackgroundColor() const override { return m_nBackgroundColor; }
    void SetBackgroundColor(uint32_t nColor) override { m_nBackgroundColor.Set(nColor); }
    bool GetBuiltInDrawingToolbar() const override { return m_regShowBuiltInDrawingToolbar; }
    void SetBuiltInDrawingToolbar(bool bShow) override { m_regShowBuiltInDrawingToolbar.Set(bShow); }
    bool GetEnableDrawingOnSavingImage() const override { return m_regEnableDrawingOnSavingImage; }
    void SetEnableDrawingOnSavingImage(bool bEnable) override
    {
        m_regEnableDrawingOnSavingImage.Set(bEnable);
    }
    IKxDrawingTool* GetIKxDrawingTool() override { return &m_objDrawingTool; }
    EKxBayerInterpolationMethod_t GetStretchMode() const override { return m_eStretchMode; }
    void SetStretchMode(EKxBayerInterpolationMethod_t e) override { m_eStretchMode.Set(e); }
    _EKxBayerInterpolationMethodForStillImageFile_t
    GetBayerInterpolationMethodForStillImageFile() const override
    {
        return m_eBayerInterpolationMethodForStillImageFile;
    }
    void SetBayerInterpolationMethodForStillImageFile(
        _EKxBayerInterpolationMethodForStillImageFile_t eMethod) override
    {
        m_eBayerInterpolationMethodForStillImageFile.Set(eMethod);
    }
    EKxColorMapType_t GetColorMapType() const override { return m_eColorMapType; }
    void SetColorMapType(EKxColorMapType_t eType) override { m_eColorMapType.Set(eType); }
    bool GetColorMapInversion() const override { return m_bColorMapInversion; }
    void SetColorMapInversion(bool bInversion) override { m_bColorMapInversion.Set(bInversion); }
    int GetColorMapPhase() const override { return m_nColorMapPhase; }
    void SetColorMapPhase(int nPhase) override { m_nColorMapPhase.Set(nPhase); }

    IKxDrawingToolInside* GetIKxDrawingToolInside() override { return &m_objDrawingTool; }

    void GetStatusBarText(QStringList& listText) override;
    IKxImageDisplayWndInside* GetIKxImageDisplayWndInside() override { return this; }
    void RunOverlay(COverlayParam* pParam) override;
    IKxImageBufferReleasable* GetPreviewImage(unsigned char bForApplication) override
    {
        if (bForApplication)
            return m_objPreview.Get(CImagePreview::Api);
        ++m_nPreviews;
        return m_objPreview.Get(CImagePreview::Widget);
    }
    uint64_t GetPreviewCount() const override { return m_nPreviews; }
    IKxImage* GetPreviewSource() const override { return m_objPreview.GetWidgetSource(); }
    void OnScrollPosOrRangeChanged() override;
    void OnScrollState(int nH, int nHMax, int nV, int nVMax) override;
    void SaveImage(bool bPreview) override;
    CImageViewSettings GetViewSettings() const override;

    void OnSettingChanged(uint32_t nUpdate, bool bByCall) override;

private:
    using MethodW = void (CKxDisplayImageWnd::*)();
    template <class T>
    using Numeric = CRegisterParamNumeric<CKxDisplayImageWnd, MethodW, T>;
    template <class T>
    using NumericMethod = CRegisterParamNumericMethod<CKxDisplayImageWnd, MethodW, T>;

    /// What has to follow a change: first the dialog's part, then the window's own.
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
        UpdatePictureIfFit = UpdateFirstOfWindow << 10,
        // The window's.
        PreviewIsDirty = UpdateFirstOfWindow << 11,
        ScrollRangesChange = UpdateFirstOfWindow << 12, ///< when the application called
        DestinationModeChanges = UpdateFirstOfWindow << 13,
        // The drawing tool's.
        UpdateDrawing = UpdateFirstOfWindow << 14,
        UpdateDrawingItemType = UpdateFirstOfWindow << 15,
        UpdateImage = UpdateFirstOfWindow << 16, ///< a new one, which waits for the next refresh

        Zoom = UpdateZoomMenu | UpdateSize | PreviewIsDirty | ScrollRangesChange,
    };
    void OnUpdateDialog(CDisplayImagePartDlg& dialog, uint32_t nKinds) override;
    void OnDrawingChanged() override { UpdateDialog(UpdateDrawing); }
    void OnDrawingItemTypeChanged() override { UpdateDialog(UpdateDrawingItemType); }
    void mSetScrollHPosition(int nPosition) { m_objScrollH.nWanted = nPosition; }
    void mSetScrollVPosition(int nPosition) { m_objScrollV.nWanted = nPosition; }

    void OnConverterChanged(const GenICam::gcstring& strNode);

    static const CWndInfo<CKxDisplayImageWnd> m_objWndInfo;

    CScrollBarState m_objScrollH;
    CScrollBarState m_objScrollV;

    static constexpr uint32_t kSetting = KxRegister_Setting;
    static constexpr uint32_t kTold = KxRegister_Told;
    static constexpr uint32_t kScroll = KxRegister_Exact | KxRegister_WritesSet;
    static constexpr uint32_t kMaxRefreshInterval = 1000;
    static constexpr double kMinMagnification = 0.01;
    static constexpr double kMaxMagnification = 64.0;

    // clang-format off
    // Address, node and what follows a change; first value; range.
    Numeric<_EKxPreviewPixelFormatMode_t> m_ePreviewPixelFormatMode{this,
        {0x2000, "PreviewPixelFormatModeReg", DestinationModeChanges | PreviewIsDirty | UpdatePicture, kSetting},
        KxPreviewPixelFormatMode_Auto, Below("ePPFM", 2)};
    NumericMethod<int> m_regScrollH{this, {0x2010, "ScrollHPositionReg", UpdateScrollH, kScroll},
        &CKxDisplayImageWnd::mSetScrollHPosition, &CKxDisplayImageWnd::GetScrollHPosition};
    NumericMethod<int> m_regScrollHMax{this, {0x2014, nullptr, 0, kTold}, nullptr, &CKxDisplayImageWnd::GetScrollHMax};
    NumericMethod<int> m_regScrollV{this, {0x2018, "ScrollVPositionReg", UpdateScrollV, kScroll},
        &CKxDisplayImageWnd::mSetScrollVPosition, &CKxDisplayImageWnd::GetScrollVPosition};
    NumericMethod<int> m_regScrollVMax{this, {0x201C, nullptr, 0, kTold}, nullptr, &CKxDisplayImageWnd::GetScrollVMax};
    Numeric<uint32_t> m_nRefreshInterval{this, {0x2020, "RefreshIntervalReg", UpdateInterval, kSetting | KxRegister_PresentPasses},
        33, UpTo("nInterval", kMaxRefreshInterval)};
    Numeric<uint32_t> m_regRefreshIntervalMin{this, {0x2024, nullptr, 0, kTold}, 0};
    Numeric<uint32_t> m_regRefreshIntervalMax{this, {0x2028, nullptr, 0, kTold}, kMaxRefreshInterval};
    Numeric<_EKxZoomMode_t> m_eZoomMode{this, {0x2030, "ZoomModeReg", Zoom | UpdatePictureIfFit, kSetting},
        KxZoomMode_FixedZoom, Below("eZM", 2)};
    Numeric<EKxBayerInterpolationMethod_t> m_eStretchMode{this,
        {0x2034, "StretchModeReg", ScrollRangesChange | PreviewIsDirty | UpdatePicture, kSetting},
        KxBayerInterpolationMethod_NearestNeighbor, FromBelow("eStretchMode", 1, 4)};
    Numeric<double> m_dManualZoomMagnification{this, {0x2038, "FixedZoomMagnificationReg", Zoom | UpdatePicture, kSetting},
        1.0, FromTo("value", kMinMagnification, kMaxMagnification)};
    Numeric<double> m_regMagnificationMin{this, {0x2040, nullptr, 0, kTold}, kMinMagnification};
    Numeric<double> m_regMagnificationMax{this, {0x2048, nullptr, 0, kTold}, kMaxMagnification};
    Numeric<_EKxBackgroundStyle_t> m_eBackgroundStyle{this, {0x2060, "BackgroundStyleReg", UpdateBackground, kSetting},
        KxBackgroundStyle_DiagCross, Below("eBS", 7)};
    Numeric<uint32_t> m_nForegroundColor{this, {0x2064, "ForegroundColorReg", UpdateBackground, kSetting}, 0x00C0C0C0};
    Numeric<uint32_t> m_nBackgroundColor{this, {0x2068, "BackgroundColorReg", UpdateBackground, kSetting}, 0x00FFFFFF};
    Numeric<_EKxBayerInterpolationMethodForStillImageFile_t> m_eBayerInterpolationMethodForStillImageFile{this,
        {0x206C, "BayerInterpolationMethodForStillImageFileReg", 0, kSetting}, KxBayerInterpolationMethodForStillImageFile_Auto};
    // No node has the name that the setter tells, so the feature keeps its cached value; nor has that of the inversion.
    Numeric<bool> m_regShowBuiltInDrawingToolbar{this,
        {0x2070, "VisibleDrawingToolBarReg", UpdateDrawingToolBar, KxRegister_AlwaysTold}, false};
    Numeric<bool> m_regEnableDrawingOnSavingImage{this, {0x2074, "EnableDrawingOnSavingImageReg", 0, KxRegister_AlwaysTold}, false};
    Numeric<EKxColorMapType_t> m_eColorMapType{this, {0x2080, "ColorMapTypeReg", UpdatePicture, kSetting},
        KxColorMapType_Normal, Below("eCMT", 3)};
    Numeric<bool> m_bColorMapInversion{this, {0x2084, "ColorMapInversonReg", UpdatePicture, kSetting}, false};
    Numeric<int> m_nColorMapPhase{this, {0x2088, "ColorMapPhaseReg", UpdatePicture, kSetting}, 0, FromBelow("nPhase", 0, 256)};
    // clang-format on

    CKxDrawingTool m_objDrawingTool{*this, m_objRegister};
    CImagePreview m_objPreview;
    uint64_t m_nPreviews = 0; // GUI thread, as the next
    CImageSaver m_objSaver;
};

} // namespace KxApi
