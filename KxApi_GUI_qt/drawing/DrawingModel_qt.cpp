// SPDX-License-Identifier: Apache-2.0
#include "drawing/DrawingModel_qt.h"

#include <utility>

namespace KxApi
{
namespace
{

const QColor kGridColor(64, 96, 128);
const QColor kObjectColor(255, 192, 0);

// The features allow less; these keep a program that writes registers from using up all memory.
constexpr long long kMaxObjects = 65536;
constexpr long long kMaxPoints = kMaxMousePoints + 1;

} // namespace

CDrawingModel::CEntry::CEntry(CDrawingModel& model, std::vector<CNote>& vecNotes)
    : m_model(model)
    , m_vecNotes(vecNotes)
    , m_lock(model.m_lock)
{
    ++m_model.m_nDepth;
    ++m_model.m_nState;
}

CDrawingModel::CEntry::~CEntry()
{
    if (--m_model.m_nDepth == 0)
        m_vecNotes.swap(m_model.m_vecNotes);
}

CDrawingModel::CDrawingModel(IKxDrawingHost& host, CKxRegister& objRegister)
    : m_host(host)
    , m_objRegister(objRegister)
    , m_objGridPen(kGridColor, KxLineStyle_Dot, 1)
    , m_objDefaultPen(kObjectColor, KxLineStyle_Solid, 2)
    , m_objDefaultBrush(Qt::black, KxBrushStyle_Null)
    , m_objDefaultFont(kObjectColor, 24)
{}

void CDrawingModel::Note(CNote note)
{
    Locked([&] { m_vecNotes.push_back(std::move(note)); });
}

void CDrawingModel::RunNotes(const std::vector<CNote>& vecNotes)
{
    for (const CNote& note : vecNotes) {
        switch (note.eNote) {
        case ENote::Invalidate:
            m_host.InvalidateNode(note.strNode);
            break;
        case ENote::Changed:
            ++m_nRevision;
            m_host.OnDrawingChanged();
            break;
        case ENote::ItemType:
            m_host.OnDrawingItemTypeChanged();
            break;
        }
    }
}

void CDrawingModel::EndBuilding()
{
    m_pBuiltItem = nullptr;
    m_nBuildClicks = 0;
}

CKxDrawingItem& CDrawingModel::BeginBuilding()
{
    auto pItem = std::make_unique<CKxDrawingItem>(m_objDefaultPen, m_objDefaultBrush, m_objDefaultFont);
    pItem->SetType(m_eItemType);
    m_pBuiltItem = &m_objObjects.Append(std::move(pItem));
    MoveSelector(m_objObjects.Count() - 1);
    InvalidateNode("DrawingObjectsCountReg");
    return *m_pBuiltItem;
}

void CDrawingModel::DeleteSelected()
{
    Locked([this] {
        if (m_pBuiltItem && m_pBuiltItem->GetSel())
            EndBuilding(); // a feature is just about to begin another one
        m_objObjects.DestroySelected();
        if (const size_t nCount = m_objObjects.Count(); nCount != 0) {
            if (m_nSelector >= nCount - 1)
                MoveSelector(nCount - 1);
            m_objObjects[m_nSelector].SetSel(true);
        }
        InvalidateNode("DrawingObjectsCountReg");
        InvalidateNode("DrawingObjectSelectorReg");
        OnDrawingObjectChanged();
    });
}

void CDrawingModel::MoveSelector(size_t nIndex)
{
    m_nSelector.SetValue(nIndex);
    OnWrittenDrawingObjectSelector();
}

void CDrawingModel::CheckObject(size_t nIndex, long long nMin, long long nEnd) const
{
    FromBelow("DrawingObjectSelector", nMin, nEnd).Check(nIndex, kDrawingSourceFile, __LINE__);
}

CKxDrawingItem& CDrawingModel::Selected()
{
    CheckObject(m_nSelector, 0, static_cast<long long>(m_objObjects.Count()));
    return m_objObjects[m_nSelector];
}

CDoublePoint& CDrawingModel::SelectedPoint(size_t nIndex)
{
    CDoublePointList& vecPoints = Selected().GetDoublePointList();
    FromBelow("Index", 0, static_cast<long long>(vecPoints.size()))
        .Check(nIndex, kDrawingSourceFile, __LINE__);
    return vecPoints[nIndex];
}

void CDrawingModel::OnWrittenDrawingItemType()
{
    Locked([this] {
        if (m_eItemType != KxDrawingItemType_Select)
            m_objObjects.DeselectAll();
        EndBuilding();
        Note({ENote::ItemType, {}});
        OnDrawingObjectChanged();
    });
}

void CDrawingModel::OnWrittenDrawingObjectSelector()
{
    Locked([this] {
        m_objObjects.SelectOnly(m_nSelector);
        InvalidateNode("DrawingObjectSelectorReg");
    });
}

size_t CDrawingModel::GetDrawingObjectsCount() const
{
    return Looked([this] { return m_objObjects.Count(); });
}

void CDrawingModel::SetDrawingObjectsCount(size_t nCount)
{
    FromTo("DrawingObjectsCount", 0, kMaxObjects).Check(nCount, kDrawingSourceFile, __LINE__);
    Locked([this, nCount] {
        if (nCount == m_objObjects.Count())
            return;
        while (m_objObjects.Count() < nCount)
            m_objObjects.Append(
                std::make_unique<CKxDrawingItem>(m_objDefaultPen, m_objDefaultBrush, m_objDefaultFont));
        if (nCount < m_objObjects.Count()) {
            EndBuildingFrom(nCount);
            m_objObjects.Cut(nCount);
        }
        if (nCount == 0)
            MoveSelector(0);
        else if (nCount <= m_nSelector)
            MoveSelector(nCount - 1);
        InvalidateNode("DrawingObjectsCountReg");
    });
}

void CDrawingModel::EndBuildingFrom(size_t nIndex)
{
    for (size_t i = nIndex; i < m_objObjects.Count(); ++i) {
        if (&m_objObjects[i] == m_pBuiltItem)
            EndBuilding();
    }
}

_EKxDrawingItemType_t CDrawingModel::GetDrawingObjectType() const
{
    return Looked([this] { return Selected().GetType(); });
}

void CDrawingModel::SetDrawingObjectType(_EKxDrawingItemType_t eType)
{
    Locked([&] { Selected().SetType(eType); });
}

bool CDrawingModel::GetLock() const
{
    return Looked([this] { return Selected().GetLock(); });
}

void CDrawingModel::SetLock(bool bLock)
{
    Locked([&] { Selected().SetLock(bLock); });
}

bool CDrawingModel::GetHide() const
{
    return Looked([this] { return Selected().GetHide(); });
}

void CDrawingModel::SetHide(bool bHide)
{
    Locked([&] { Selected().SetHide(bHide); });
}

size_t CDrawingModel::GetPointCount() const
{
    return Looked([this] { return Selected().GetPoints().size(); });
}

void CDrawingModel::SetPointCount(size_t nCount)
{
    FromTo("DrawingObjectPointCount", 0, kMaxPoints).Check(nCount, kDrawingSourceFile, __LINE__);
    Locked([&] { Selected().GetDoublePointList().resize(nCount); });
}

double CDrawingModel::GetPointX(size_t nIndex) const
{
    return Looked([&] { return const_cast<CDrawingModel*>(this)->SelectedPoint(nIndex).x; });
}

void CDrawingModel::SetPointX(size_t nIndex, double x)
{
    Locked([&] { SelectedPoint(nIndex).x = x; });
}

double CDrawingModel::GetPointY(size_t nIndex) const
{
    return Looked([&] { return const_cast<CDrawingModel*>(this)->SelectedPoint(nIndex).y; });
}

void CDrawingModel::SetPointY(size_t nIndex, double y)
{
    Locked([&] { SelectedPoint(nIndex).y = y; });
}

GenICam::gcstring CDrawingModel::GetDrawingObjectName() const
{
    return Looked([this] { return Selected().GetName(); });
}

void CDrawingModel::SetDrawingObjectName(const GenICam::gcstring& strName)
{
    Locked([&] { Selected().SetName(strName); });
}

// An object without a shape has no texts.

_EKxDisplayText_t CDrawingModel::GetDrawingObjectEnabledTexts() const
{
    return Looked([this] {
        const IKxDrawingItem* const pShape = Selected().GetShape();
        return pShape ? pShape->GetEnableDisplayText() : KxDisplayText_None;
    });
}

void CDrawingModel::SetDrawingObjectEnabledTexts(_EKxDisplayText_t eTexts)
{
    Locked([&] {
        if (IKxDrawingItem* const pShape = Selected().GetShape())
            pShape->SetEnableDisplayText(eTexts);
    });
}

_EKxDisplayText_t CDrawingModel::GetDrawingObjectAvailableTexts() const
{
    return Looked([this] {
        const IKxDrawingItem* const pShape = Selected().GetShape();
        return pShape ? pShape->GetAvailableDisplayText() : KxDisplayText_None;
    });
}

void CDrawingModel::mSetDrawingObjectRemove(size_t nIndex)
{
    Locked([&] {
        const size_t nCount = m_objObjects.Count();
        CheckObject(nIndex, 0, static_cast<long long>(nCount));
        m_objObjects.Remove(nIndex);
        if (m_nSelector >= nCount - 1)
            MoveSelector(nCount < 2 ? nCount - 1 : nCount - 2);
    });
}

void CDrawingModel::mSetDrawingObjectMoveToFront(size_t nIndex)
{
    Locked([&] {
        CheckObject(nIndex, 0, static_cast<long long>(m_objObjects.Count()) - 1);
        m_objObjects.SwapWithNext(nIndex);
        MoveSelector(nIndex + 1);
    });
}

void CDrawingModel::mSetDrawingObjectMoveToBack(size_t nIndex)
{
    Locked([&] {
        CheckObject(nIndex, 1, static_cast<long long>(m_objObjects.Count()));
        m_objObjects.SwapWithNext(nIndex - 1);
        MoveSelector(nIndex - 1);
    });
}

} // namespace KxApi
