// SPDX-License-Identifier: Apache-2.0
// The graph window's data and settings. Its pictures are in DisplayGraphPicture_qt.cpp.
#include "graph/KxDisplayGraphWnd_qt.h"

#include "frame/utility_qt.h"

#include <Base/GCException.h>
#include <KxApi_TL/IKxPixelComponent.h>

#include <QCursor>
#include <QStringList>
#include <algorithm>

namespace KxApi
{
namespace
{

constexpr int kGraphIndicators = 2;

// By their places in a record.
constexpr const char* kLineNodes[] = {"LineStyleReg", "LineWidthReg", "LineForegroundColorReg",
                                      "LineEndcapReg", "LineJoinReg"};
constexpr const char* kTextNodes[] = {"TextForegroundColorReg", "TextBackgroundColorModeReg",
                                      "TextBackgroundColorReg", "TextHeightReg"};

} // namespace

const CWndInfo<CKxDisplayGraphWnd> CKxDisplayGraphWnd::m_objWndInfo{};

CKxDisplayGraphWnd::CKxDisplayGraphWnd(IKxSpecificTypeAllocator* pAllocator)
    : CKxBaseWnd(KxXMLResource_DisplayGraph, "GUIPort", GenApi::RW, "Display Graph", kGraphIndicators)
    , m_objRing([=] { return CreateIKxGraphDataBufferListResizable(pAllocator); }, 0)
{}

CKxDisplayGraphWnd::~CKxDisplayGraphWnd() { DestroyNodeMap(); }

size_t CKxDisplayGraphWnd::RoleOf(EKxGraphDataIndex_t eIndex)
{
    return eIndex == KxGraphDataIndex_Save ? size_t{RoleSave} : size_t{eIndex};
}

void CKxDisplayGraphWnd::RegisterIKxGraphDataBufferList(const IKxGraphDataBufferList* pList)
{
    {
        const GenApi::AutoLock lock(m_lockRegister);
        const int32_t nIndex = m_objRing.Claim(RoleWriting);
        m_objRing.Buffer(nIndex)->CopyFrom(pList);
        m_objRing.Set(RoleLatest, nIndex);
        m_bHasGraphData = true;
    }
    UpdateDialog(UpdateGraph);
}

const IKxGraphDataBufferList* CKxDisplayGraphWnd::GetGraphData(EKxGraphDataIndex_t eIndex, bool bUpdate)
{
    const size_t nRole = RoleOf(eIndex);
    return m_objRing.Buffer(bUpdate ? m_objRing.Copy(RoleLatest, nRole) : m_objRing.Index(nRole));
}

void CKxDisplayGraphWnd::GetCDrawGraphParam(CDrawGraphParam& param) const
{
    param.bPlotSizeAuto = m_bPlotSizeAuto;
    param.nPlotMarginLeft = m_nPlotMarginLeft;
    param.nPlotMarginRight = m_nPlotMarginRight;
    param.nPlotMarginTop = m_nPlotMarginTop;
    param.nPlotMarginBottom = m_nPlotMarginBottom;
    param.nPlotWidth = m_nPlotWidth;
    param.nPlotHeight = m_nPlotHeight;
    param.nScaleLineSizeX = m_nScaleLineSizeX;
    param.nScaleLineSizeY = m_nScaleLineSizeY;
    param.eScaleLineDirectionX = m_eScaleLineDirectionX;
    param.eScaleLineDirectionY = m_eScaleLineDirectionY;
}

CGraphAppearance CKxDisplayGraphWnd::Appearance() const
{
    return {m_nDrawEnable, m_nBackgroundColor, m_eScaleMode, m_eNormalization, m_nFloatingPointDigits};
}

void CKxDisplayGraphWnd::mSetLineInfo(size_t eGraphLine, int64_t nIndex, uint32_t nValue, bool bInvalidate)
{
    if (!m_objStyle.SetLineInfo(eGraphLine, nIndex, nValue))
        return;
    if (bInvalidate)
        InvalidateNode(kLineNodes[nIndex]);
    UpdateDialog(UpdateDrawing);
}

void CKxDisplayGraphWnd::mSetTextInfo(size_t eGraphText, int64_t nIndex, uint32_t nValue, bool bInvalidate)
{
    if (!m_objStyle.SetTextInfo(eGraphText, nIndex, nValue))
        return;
    if (bInvalidate)
        InvalidateNode(kTextNodes[nIndex]);
    UpdateDialog(UpdateDrawing);
}

void CKxDisplayGraphWnd::OnScrollState(int nH, int nHMax, int nV, int nVMax)
{
    m_objScrollH.Note(nH, nHMax);
    m_objScrollV.Note(nV, nVMax);
}

void CKxDisplayGraphWnd::OnScrollPosOrRangeChanged()
{
    for (const char* const szNode :
         {"ScrollHMaxReg", "ScrollVMaxReg", "ScrollHPositionReg", "ScrollVPositionReg"})
        InvalidateNode(szNode);
}

void CKxDisplayGraphWnd::OnUpdateDialog(CDisplayGraphPartDlg& dialog, uint32_t nKinds)
{
    if (nKinds & UpdateScrollH)
        dialog.setScrollBarH(m_objScrollH.nWanted);
    if (nKinds & UpdateScrollV)
        dialog.setScrollBarV(m_objScrollV.nWanted);
    if (nKinds & UpdateGraph)
        dialog.OnUpdateGraphData();
    if (!dialog.isVisible())
        return; // it reads the rest when it is shown
    if (nKinds & UpdateInterval)
        dialog.OnRefreshIntervalUpdated();
    if (nKinds & UpdateTranslucency)
        dialog.setTranslucent(isTranslucent());
    if (nKinds & UpdateDrawing)
        dialog.OnUpdateDrawSetting();
}

QString CKxDisplayGraphWnd::ValuesAt(double dRatio) const
{
    const IKxGraphDataBufferList& list = *m_objRing.Buffer(m_objRing.Index(RoleWidget));
    size_t nMaxLength = 0;
    for (size_t n = 0; n < list.GetCount(); ++n)
        nMaxLength = std::max(nMaxLength, list.GetItem(n)->GetGraphData()->GetLength());
    const auto nElement = static_cast<size_t>(static_cast<double>(nMaxLength) * dRatio);
    QString strText;
    for (size_t n = 0; n < list.GetCount(); ++n) {
        const IKxGraphData& data = *list.GetItem(n)->GetGraphData();
        if (data.GetLength() == 0)
            continue;
        const size_t nIndex = std::min(nElement, data.GetLength() - 1);
        strText += " ";
        if (const EKxPixelComponentType_t eComponent = GraphComponentOf(data)) {
            if (const IKxPixelComponentInfo* const pInfo = GetIKxPixelComponentInfo(eComponent))
                strText += ToQString(pInfo->GetName());
        }
        strText += QString::asprintf("[%zu]=%u", nIndex, data.GetValues()[nIndex]);
    }
    return strText;
}

void CKxDisplayGraphWnd::GetStatusBarText(QStringList& listText)
{
    Base::GetStatusBarText(listText);
    if (!m_bHasGraphData || !Dialog())
        return;
    CDrawGraphParam param;
    GetCDrawGraphParam(param);
    const int nX = Dialog()->mapFromGlobal(QCursor::pos()).x();
    const auto nLeft = static_cast<int>(param.nPlotMarginLeft);
    const int nSpan = Dialog()->width() - nLeft - static_cast<int>(param.nPlotMarginRight);
    const double dRatio =
        nSpan == 0 ? 0.0 : std::clamp(static_cast<double>(nX - nLeft) / static_cast<double>(nSpan), 0.0, 1.0);
    if (m_objRing.Buffer(m_objRing.Index(RoleWidget))->GetCount() > 0)
        listText.append(ValuesAt(dRatio));
}

} // namespace KxApi
