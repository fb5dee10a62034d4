// SPDX-License-Identifier: Apache-2.0
// The graph window.
#pragma once

#include "frame/KxBaseWnd_qt.h"
#include "frame/RoleRing_qt.h"
#include "frame/ScrollBarState_qt.h"
#include "frame/WndInfo_qt.h"
#include "graph/DisplayGraphPartDlg_qt.h"
#include "graph/GraphRenderer_qt.h"
#include "graph/GraphStyle_qt.h"
#include "graph/ICDisplayGraphDlgParent.h"

#include <KxApi_IP/IKxGraphDataBufferList.h>

#include <atomic>

namespace KxApi
{

/// The model of the graph window: takes data over, keeps the settings, each of which is a register with its
/// row, and paints for whoever asks.
///
/// Locks, besides those of the base: m_lockRegister, m_lockDraw and m_lockGetImage, each held for a whole
/// call with only the ring's and the style's taken in it.
class CKxDisplayGraphWnd final
    : public CKxBaseWnd<IKxGraphDisplayWndInside, ICDisplayGraphDlgParent, CDisplayGraphPartDlg>
{
    using Base = CKxBaseWnd<IKxGraphDisplayWndInside, ICDisplayGraphDlgParent, CDisplayGraphPartDlg>;
    using Direction = _EKxGraphScaleLineDirection_t;

public:
    static constexpr _EKxWindowType_t kWndType = KxWindowType_GraphDisplay;
    static constexpr const char* kWndName = "Graph display";

    /// @param pAllocator source of the memory of values, not owned; null for the process's own. Raises what
    /// CreateIKxGraphDataBufferListResizable raises.
    explicit CKxDisplayGraphWnd(IKxSpecificTypeAllocator* pAllocator);
    ~CKxDisplayGraphWnd() override;

    static const char* SourceFile() noexcept { return KXGC_SOURCE_FILE; }

    const IKxWndInfo* GetIKxWndInfo() const override { return &m_objWndInfo; }

    void RegisterIKxGraphDataBufferList(const IKxGraphDataBufferList* pList) override;
    void Draw(void* pPainter, uint32_t nWidth, uint32_t nHeight) override;
    void GetIKxImage(IKxImageBuffer* pBuffer, size_t nWidth, size_t nHeight) override;

    _EKxGraphNomalization_t GetNormalization() const override { return m_eNormalization; }
    void SetNormalization(_EKxGraphNomalization_t e) override { m_eNormalization.Set(e); }
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
    uint32_t GetPlotWidth() const override { return m_nPlotWidth; }
    void SetPlotWidth(uint32_t nWidth) override { m_nPlotWidth.Set(nWidth); }
    uint32_t GetPlotHeight() const override { return m_nPlotHeight; }
    void SetPlotHeight(uint32_t nHeight) override { m_nPlotHeight.Set(nHeight); }
    bool GetPlotSizeAuto() const override { return m_bPlotSizeAuto; }
    void SetPlotSizeAuto(bool bAuto) override { m_bPlotSizeAuto.Set(bAuto); }
    uint32_t GetPlotMarginLeft() const override { return m_nPlotMarginLeft; }
    void SetPlotMarginLeft(uint32_t nMargin) override { m_nPlotMarginLeft.Set(nMargin); }
    uint32_t GetPlotMarginRight() const override { return m_nPlotMarginRight; }
    void SetPlotMarginRight(uint32_t nMargin) override { m_nPlotMarginRight.Set(nMargin); }
    uint32_t GetPlotMarginTop() const override { return m_nPlotMarginTop; }
    void SetPlotMarginTop(uint32_t nMargin) override { m_nPlotMarginTop.Set(nMargin); }
    uint32_t GetPlotMarginBottom() const override { return m_nPlotMarginBottom; }
    void SetPlotMarginBottom(uint32_t nMargin) override { m_nPlotMarginBottom.Set(nMargin); }
    Direction GetScaleLineDirectionX() const override { return m_eScaleLineDirectionX; }
    void SetScaleLineDirectionX(Direction eDirection) override { m_eScaleLineDirectionX.Set(eDirection); }
    Direction GetScaleLineDirectionY() const override { return m_eScaleLineDirectionY; }
    void SetScaleLineDirectionY(Direction eDirection) override { m_eScaleLineDirectionY.Set(eDirection); }
    uint32_t GetScaleLineSizeX() const override { return m_nScaleLineSizeX; }
    void SetScaleLineSizeX(uint32_t nSize) override { m_nScaleLineSizeX.Set(nSize); }
    uint32_t GetScaleLineSizeY() const override { return m_nScaleLineSizeY; }
    void SetScaleLineSizeY(uint32_t nSize) override { m_nScaleLineSizeY.Set(nSize); }

    // Settings that applications reach as features.
    void SetBackgroundColor(uint32_t nColor) { m_nBackgroundColor.Set(nColor); }
    void SetScaleMode(_EKxGraphScaleMode_t eMode) { m_eScaleMode.Set(eMode); }
    uint32_t GetDrawEnable() const { return m_nDrawEnable; }
    void SetDrawEnable(uint32_t nBits) { m_nDrawEnable.Set(nBits); }
    void SetFloatingPointDisplaySwitchingDigitNumber(uint32_t n) { m_nFloatingPointDigits.Set(n); }
    /// See CGraphStyle.
    void SetLineInfo(size_t eGraphLine, int64_t nIndex, uint32_t nValue)
    {
        mSetLineInfo(eGraphLine, nIndex, nValue, true);
    }
    void SetTextInfo(size_t eGraphText, int64_t nIndex, uint32_t nValue)
    {
        mSetTextInfo(eGraphText, nIndex, nValue, true);
    }

    void GetStatusBarText(QStringList& listText) override;
    IKxGraphDisplayWndInside* GetIKxGraphDisplayWndInside() override { return this; }
    void OnScrollPosOrRangeChanged() override;
    void OnScrollState(int nH, int nHMax, int nV, int nVMax) override;
    void GetCDrawGraphParam(CDrawGraphParam& param) const override;
    void DrawInside(QPainter* pPainter, CDrawGraphParam& param, EKxGraphDataIndex_t eIndex) override;
    bool isTranslucent() override { return (m_nDrawEnable & KxGraphDrawEnable_Background) == 0; }
    const IKxGraphDataBufferList* GetGraphData(EKxGraphDataIndex_t eIndex, bool bUpdate) override;

private:
    using MethodW = void (CKxDisplayGraphWnd::*)();
    template <class T>
    using Numeric = CRegisterParamNumeric<CKxDisplayGraphWnd, MethodW, T>;
    template <class T>
    using NumericMethod = CRegisterParamNumericMethod<CKxDisplayGraphWnd, MethodW, T>;
    using Records = CRegisterParamRecordsMethod<CKxDisplayGraphWnd, MethodW, uint32_t>;

    enum EGraphUpdate : uint32_t
    {
        UpdateScrollH = UpdateFirstOfWindow << 0,
        UpdateScrollV = UpdateFirstOfWindow << 1,
        UpdateInterval = UpdateFirstOfWindow << 2,
        UpdateGraph = UpdateFirstOfWindow << 3,
        UpdateDrawing = UpdateFirstOfWindow << 4,
        UpdateTranslucency = UpdateFirstOfWindow << 5,
    };
    void OnUpdateDialog(CDisplayGraphPartDlg& dialog, uint32_t nKinds) override;
    void mSetScrollHPosition(int nPosition) { m_objScrollH.nWanted = nPosition; }
    void mSetScrollVPosition(int nPosition) { m_objScrollV.nWanted = nPosition; }
    void mSetLineInfo(size_t eGraphLine, int64_t nIndex, uint32_t nValue, bool bInvalidate);
    void mSetTextInfo(size_t eGraphText, int64_t nIndex, uint32_t nValue, bool bInvalidate);
    // What the port has at computed addresses.
    void WriteLineInfo(size_t nPen, size_t nIndex, uint32_t nValue)
    {
        mSetLineInfo(nPen, static_cast<int64_t>(nIndex), nValue, false);
    }
    uint32_t ReadLineInfo(size_t nPen, size_t nIndex) const
    {
        return m_objStyle.LineInfo(nPen, static_cast<int64_t>(nIndex));
    }
    void WriteTextInfo(size_t nFont, size_t nIndex, uint32_t nValue)
    {
        mSetTextInfo(nFont, static_cast<int64_t>(nIndex), nValue, false);
    }
    uint32_t ReadTextInfo(size_t nFont, size_t nIndex) const
    {
        return m_objStyle.TextInfo(nFont, static_cast<int64_t>(nIndex));
    }
    CGraphAppearance Appearance() const;
    QString ValuesAt(double dRatio) const;

    static const CWndInfo<CKxDisplayGraphWnd> m_objWndInfo;

    CScrollBarState m_objScrollH;
    CScrollBarState m_objScrollV;
    CGraphStyle m_objStyle;

    static constexpr uint32_t kMaxRefreshInterval = 1000;
    static constexpr long long kMaxPlotSize = 8192;
    static constexpr long long kMaxMargin = 1024;
    static constexpr long long kMaxDigits = 10;
    // The present value always passes. The value is in the register, or a write does what the setter does.
    static constexpr uint32_t kValue = KxRegister_PresentPasses;
    static constexpr uint32_t kSetting =
        KxRegister_PresentPasses | KxRegister_WritesSet | KxRegister_WritesShow;
    static constexpr uint32_t kScroll = KxRegister_WritesSet;

    // clang-format off
    // Address, node and what follows a change; first value; range.
    NumericMethod<int> m_regScrollH{this, {0x2010, "ScrollHPositionReg", UpdateScrollH, kScroll},
        &CKxDisplayGraphWnd::mSetScrollHPosition, &CKxDisplayGraphWnd::GetScrollHPosition};
    NumericMethod<int> m_regScrollHMax{this, {0x2014, nullptr, 0, KxRegister_WritesDropped}, nullptr, &CKxDisplayGraphWnd::GetScrollHMax};
    NumericMethod<int> m_regScrollV{this, {0x2018, "ScrollVPositionReg", UpdateScrollV, kScroll},
        &CKxDisplayGraphWnd::mSetScrollVPosition, &CKxDisplayGraphWnd::GetScrollVPosition};
    NumericMethod<int> m_regScrollVMax{this, {0x201C, nullptr, 0, KxRegister_WritesDropped}, nullptr, &CKxDisplayGraphWnd::GetScrollVMax};
    Numeric<uint32_t> m_nRefreshInterval{this, {0x2020, "RefreshIntervalReg", UpdateInterval, kValue}, 33,
        UpTo("nInterval", kMaxRefreshInterval)};
    Numeric<uint32_t> m_regRefreshIntervalMin{this, {0x2024, nullptr, 0, 0, GenApi::RO}, 0};
    Numeric<uint32_t> m_regRefreshIntervalMax{this, {0x2028, nullptr, 0, 0, GenApi::RO}, kMaxRefreshInterval};
    Numeric<uint32_t> m_nBackgroundColor{this, {0x2068, "BackgroundColorReg", UpdateDrawing, kValue}, 0x00FFFFFF};
    Numeric<_EKxGraphScaleMode_t> m_eScaleMode{this, {0x2070, "ScaleModeReg", UpdateDrawing, kValue}, KxGraphScaleMode_Logarithmic};
    // No node has this name: the features are bits of a register without one.
    Numeric<uint32_t> m_nDrawEnable{this, {0x2078, "DrawEnableReg", UpdateTranslucency | UpdateDrawing, kValue | KxRegister_WritesShow}, 0xFFFFFFFF};
    Numeric<uint32_t> m_nPlotWidth{this, {0x2080, "PlotWidthReg", UpdateDrawing, kSetting}, 512, UpTo("nValue", kMaxPlotSize)};
    Numeric<uint32_t> m_nPlotHeight{this, {0x2084, "PlotHeightReg", UpdateDrawing, kSetting}, 256, UpTo("nValue", kMaxPlotSize)};
    Numeric<bool> m_bPlotSizeAuto{this, {0x2088, "PlotSizeAutoReg", UpdateDrawing, kSetting}, true};
    Numeric<_EKxGraphNomalization_t> m_eNormalization{this, {0x208C, "NormalizationReg", UpdateDrawing, kValue},
        KxGraphNomalization_MaximumValue};
    Numeric<uint32_t> m_nPlotMarginLeft{this, {0x2090, "PlotMarginLeftReg", UpdateDrawing, kSetting}, 84, UpTo("nValue", kMaxMargin)};
    Numeric<uint32_t> m_nPlotMarginRight{this, {0x2094, "PlotMarginRightReg", UpdateDrawing, kSetting}, 16, UpTo("nValue", kMaxMargin)};
    Numeric<uint32_t> m_nPlotMarginTop{this, {0x2098, "PlotMarginTopReg", UpdateDrawing, kSetting}, 16, UpTo("nValue", kMaxMargin)};
    Numeric<uint32_t> m_nPlotMarginBottom{this, {0x209C, "PlotMarginBottomReg", UpdateDrawing, kSetting}, 24, UpTo("nValue", kMaxMargin)};
    Numeric<uint32_t> m_nFloatingPointDigits{this, {0x20A0, "FloatingPointDisplaySwitchingDigitNumberReg", UpdateDrawing, kValue}, 6,
        UpTo("nValue", kMaxDigits)};
    Numeric<Direction> m_eScaleLineDirectionX{this, {0x20B0, "ScaleXLineDirectionReg", UpdateDrawing, kSetting},
        KxGraphScaleLineDirection_Outside};
    Numeric<Direction> m_eScaleLineDirectionY{this, {0x20B4, "ScaleYLineDirectionReg", UpdateDrawing, kSetting},
        KxGraphScaleLineDirection_Outside};
    Numeric<uint32_t> m_nScaleLineSizeX{this, {0x20B8, "ScaleXLineSizeReg", UpdateDrawing, kSetting}, 5};
    Numeric<uint32_t> m_nScaleLineSizeY{this, {0x20BC, "ScaleYLineSizeReg", UpdateDrawing, kSetting}, 5};
    // Pens and fonts, by the place that the map's selectors choose.
    Records m_regLines{this, {0x3000}, 0x4010, 0x20, &CKxDisplayGraphWnd::WriteLineInfo, &CKxDisplayGraphWnd::ReadLineInfo};
    Records m_regTexts{this, {0x5000}, 0x501C, 0x10, &CKxDisplayGraphWnd::WriteTextInfo, &CKxDisplayGraphWnd::ReadTextInfo};
    // clang-format on

    /// Roles in the ring; those up to Latest keep their list from new data.
    enum ERole : size_t
    {
        RoleWidget,
        RoleDraw,
        RoleGetImage,
        RoleLatest,
        RoleSave,
        RoleWriting,
        kRoles,
    };
    static size_t RoleOf(EKxGraphDataIndex_t eIndex);
    static constexpr size_t kLists = 6;
    static constexpr size_t kGuardedRoles = RoleLatest + 1;
    CRoleRing<IKxGraphDataBufferListResizable, kLists, kRoles, kGuardedRoles> m_objRing;
    std::atomic<bool> m_bHasGraphData{false};
    GenApi::CLock m_lockRegister; // held while a list is copied
    GenApi::CLock m_lockDraw;     // held while the list of its role is read; likewise the next
    GenApi::CLock m_lockGetImage;
};

} // namespace KxApi
