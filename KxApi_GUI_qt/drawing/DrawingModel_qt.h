// SPDX-License-Identifier: Apache-2.0
// What the drawing tool knows, and its registers.
#pragma once

#include "drawing/DrawingObjects_qt.h"
#include "frame/IKxWndInside.h"
#include "frame/KxRegister_qt.h"

#include <Base/GCSynch.h>

#include <atomic>
#include <utility>
#include <vector>

namespace KxApi
{

/// What the tool asks of its window. Any thread, and with none of the tool's locks held.
struct IKxDrawingHost : virtual IKxWndInside
{
    /// The drawing has to be painted anew.
    virtual void OnDrawingChanged() = 0;
    /// The tool draws something else now.
    virtual void OnDrawingItemTypeChanged() = 0;

protected:
    ~IKxDrawingHost() = default;
};

/// The objects, the styles and the settings, which the mouse and the features work on alike. One lock guards
/// objects, styles, selection and what is being built. What it leads to outside, nodes to be invalidated and
/// the dialog's repaint, waits until the lock is given back: a thread that writes a feature holds the node
/// map and waits for the lock, so nobody may wait for the node map with the lock held.
class CDrawingModel
{
public:
    /// Enters the registers, which belong to the model. @param host outlives it.
    CDrawingModel(IKxDrawingHost& host, CKxRegister& objRegister);
    CDrawingModel(const CDrawingModel&) = delete;
    CDrawingModel& operator=(const CDrawingModel&) = delete;

    /// Runs a function under the lock, and what it has noted afterwards. Recursive: notes wait for the end of
    /// the outermost call.
    template <class Function>
    void Locked(Function function)
    {
        std::vector<CNote> vecNotes;
        {
            const CEntry entry(*this, vecNotes);
            function();
        }
        RunNotes(vecNotes);
    }
    /// For looking only.
    template <class Function>
    auto Looked(Function function) const
    {
        const GenICam::AutoLock lock(m_lock);
        return function();
    }

    // All of this is to be called by what runs in Locked.

    CDrawingObjects& Objects() { return m_objObjects; }
    const CDrawingObjects& Objects() const { return m_objObjects; }
    /// What the last paint was done by.
    _KxOnDrawParamForDrawing_t& DrawParam() { return m_drawParam; }
    const _KxOnDrawParamForDrawing_t& DrawParam() const { return m_drawParam; }

    CKxPen& GridPen() { return m_objGridPen; }
    CKxPen& DefaultPen() { return m_objDefaultPen; }
    CKxBrush& DefaultBrush() { return m_objDefaultBrush; }
    CKxFont& DefaultFont() { return m_objDefaultFont; }
    /// The styles of the object at the selector. Raise OutOfRangeException when there is none.
    IKxPen& SelectedPen() { return Selected().GetIKxPen(); }
    IKxBrush& SelectedBrush() { return Selected().GetIKxBrush(); }
    IKxFont& SelectedFont() { return Selected().GetIKxFont(); }

    /// The object that the mouse is building, null for none, and the presses and releases so far.
    CKxDrawingItem* BuiltItem() const { return m_pBuiltItem; }
    size_t BuildClicks() const { return m_nBuildClicks; }
    void CountBuildClick() { ++m_nBuildClicks; }
    void EndBuilding();
    /// A new object of the present item type, selected and on top.
    CKxDrawingItem& BeginBuilding();

    /// Destroys the selected objects and selects the one that is at the selector then.
    void DeleteSelected();

    /// Stores the selector, and then selects that object alone.
    void MoveSelector(size_t nIndex);
    size_t Selector() const { return m_nSelector; }
    /// Raises OutOfRangeException unless nMin <= nIndex < nEnd.
    void CheckObject(size_t nIndex, long long nMin, long long nEnd) const;

    // Any thread.

    _EKxDrawingItemType_t ItemType() const { return m_eItemType; }
    /// Nothing when it is the present one.
    void SetItemType(_EKxDrawingItemType_t eType) { m_eItemType.Set(eType); }
    bool HidesAll() const { return m_bHideAll; }
    /// Goes up with each change of what is drawn or measured.
    uint64_t Revision() const { return m_nRevision; }
    /// Another number after each Locked, which may have changed something.
    uint64_t State() const { return m_nState; }
    void NoteRevision() { ++m_nRevision; }

    // What follows a change: at once, or when the lock is given back.
    void InvalidateNode(const GenICam::gcstring& strName) { Note({ENote::Invalidate, strName}); }
    void OnDrawingObjectChanged() { Note({ENote::Changed, {}}); }
    /// Has the drawing painted as it is. With the lock given back.
    void Repaint() { m_host.OnDrawingChanged(); }
    /// For the registers: each update is the one above.
    void OnSettingChanged(uint32_t, bool) { OnDrawingObjectChanged(); }
    CKxRegister& Registers() { return m_objRegister; }
    static const char* SourceFile() noexcept { return kDrawingSourceFile; }

private:
    enum class ENote
    {
        Invalidate,
        Changed,
        ItemType,
    };
    struct CNote
    {
        ENote eNote;
        GenICam::gcstring strNode;
    };
    /// Holds the lock; its end hands out the notes, if it is the outermost one.
    class CEntry
    {
    public:
        CEntry(CDrawingModel& model, std::vector<CNote>& vecNotes);
        CEntry(const CEntry&) = delete;
        CEntry& operator=(const CEntry&) = delete;
        ~CEntry();

    private:
        CDrawingModel& m_model;
        std::vector<CNote>& m_vecNotes;
        const GenICam::AutoLock m_lock;
    };
    void Note(CNote note);
    void RunNotes(const std::vector<CNote>& vecNotes);

    using MethodW = void (CDrawingModel::*)();
    template <class T>
    using Numeric = CRegisterParamNumeric<CDrawingModel, MethodW, T>;
    template <class T>
    using Method = CRegisterParamNumericMethod<CDrawingModel, MethodW, T>;
    using Text = CRegisterParamText<CDrawingModel, MethodW>;
    using TextMethod = CRegisterParamTextMethod<CDrawingModel, MethodW>;
    using Array = CRegisterParamNumberArrayMethod<CDrawingModel, MethodW, double>;

    friend class CKxDrawingTool; // whose getters and setters stand for registers

    CKxDrawingItem& Selected();
    void EndBuildingFrom(size_t nIndex);
    const CKxDrawingItem& Selected() const { return const_cast<CDrawingModel*>(this)->Selected(); }
    CDoublePoint& SelectedPoint(size_t nIndex);

    // A part of a style, by its getter and setter.
    template <auto kStyle, auto kGet>
    auto GetPart() const
    {
        auto* const pThis = const_cast<CDrawingModel*>(this);
        return Looked([&] { return ((pThis->*kStyle)().*kGet)(); });
    }
    template <auto kStyle, auto kSet, class T>
    void SetPart(T value)
    {
        Locked([&] { ((this->*kStyle)().*kSet)(value); });
    }
    template <auto kStyle, auto kGet>
    unsigned int GetColorPart() const
    {
        auto* const pThis = const_cast<CDrawingModel*>(this);
        return Looked([&] { return ToPackedColor(((pThis->*kStyle)().*kGet)()); });
    }
    template <auto kStyle, auto kSet>
    void SetColorPart(unsigned int nColor)
    {
        Locked([&] { ((this->*kStyle)().*kSet)(FromPackedColor(nColor)); });
    }
    template <auto kStyle>
    GenICam::gcstring GetFamilyPart() const
    {
        return GetPart<kStyle, &IKxFont::GetFamily>();
    }
    template <auto kStyle>
    void SetFamilyPart(const GenICam::gcstring& strFamily)
    {
        Locked([&] { (this->*kStyle)().SetFamily(strFamily); });
    }
    // Rows of such parts.
    template <class T, auto kStyle, auto kGet, auto kSet>
    Method<T> Part(const CRegisterRow& row)
    {
        return {this, row, &CDrawingModel::SetPart<kStyle, kSet, T>, &CDrawingModel::GetPart<kStyle, kGet>};
    }
    template <auto kStyle, auto kGet, auto kSet>
    Method<unsigned int> Color(const CRegisterRow& row)
    {
        return {this, row, &CDrawingModel::SetColorPart<kStyle, kSet>,
                &CDrawingModel::GetColorPart<kStyle, kGet>};
    }
    template <auto kStyle>
    TextMethod Family(const CRegisterRow& row)
    {
        return {this, row, 256, &CDrawingModel::SetFamilyPart<kStyle>, &CDrawingModel::GetFamilyPart<kStyle>};
    }

    void OnWrittenDrawingItemType();
    void OnWrittenDrawingObjectSelector();
    size_t GetDrawingObjectsCount() const;
    void SetDrawingObjectsCount(size_t nCount);
    _EKxDrawingItemType_t GetDrawingObjectType() const;
    void SetDrawingObjectType(_EKxDrawingItemType_t eType);
    bool GetLock() const;
    void SetLock(bool bLock);
    bool GetHide() const;
    void SetHide(bool bHide);
    size_t GetPointCount() const;
    void SetPointCount(size_t nCount);
    double GetPointX(size_t nIndex) const;
    void SetPointX(size_t nIndex, double x);
    double GetPointY(size_t nIndex) const;
    void SetPointY(size_t nIndex, double y);
    GenICam::gcstring GetDrawingObjectName() const;
    void SetDrawingObjectName(const GenICam::gcstring& strName);
    _EKxDisplayText_t GetDrawingObjectEnabledTexts() const;
    void SetDrawingObjectEnabledTexts(_EKxDisplayText_t eTexts);
    _EKxDisplayText_t GetDrawingObjectAvailableTexts() const;
    void mSetDrawingObjectRemove(size_t nIndex);
    void mSetDrawingObjectMoveToFront(size_t nIndex);
    void mSetDrawingObjectMoveToBack(size_t nIndex);

    IKxDrawingHost& m_host;
    CKxRegister& m_objRegister;
    mutable GenICam::CLock m_lock; // see the class
    int m_nDepth = 0;              // of Locked
    uint64_t m_nState = 0;
    std::vector<CNote> m_vecNotes;
    std::atomic<uint64_t> m_nRevision{0};

    CDrawingObjects m_objObjects;
    CKxDrawingItem* m_pBuiltItem = nullptr; // of the list, or taken out of it
    size_t m_nBuildClicks = 0;
    _KxOnDrawParamForDrawing_t m_drawParam;
    CKxPen m_objGridPen;
    CKxPen m_objDefaultPen;
    CKxBrush m_objDefaultBrush;
    CKxFont m_objDefaultFont;

    static constexpr uint32_t kShown = 1; // the drawing is painted anew
    static constexpr auto kWriteOnly = GenApi::WO;
    using M = CDrawingModel;

    // clang-format off
    // Address, node, whether it is shown; first value; method that follows a write.
    Numeric<_EKxDrawingItemType_t> m_eItemType{this, {0x1000, "DrawingItemTypeReg"}, KxDrawingItemType_None, {}, &M::OnWrittenDrawingItemType};
    Method<size_t> m_regObjectsCount{this, {0x1004, nullptr, kShown}, &M::SetDrawingObjectsCount, &M::GetDrawingObjectsCount};
    Numeric<size_t> m_nSelector{this, {0x1010, nullptr}, 0, {}, &M::OnWrittenDrawingObjectSelector};
    Method<_EKxDrawingItemType_t> m_regObjectType{this, {0x1018, nullptr, kShown}, &M::SetDrawingObjectType, &M::GetDrawingObjectType};
    Method<bool> m_regObjectIsLocked{this, {0x1020, nullptr, kShown}, &M::SetLock, &M::GetLock};
    Method<bool> m_regObjectIsHidden{this, {0x1024, nullptr, kShown}, &M::SetHide, &M::GetHide};
    Method<size_t> m_regObjectPointCount{this, {0x1028, nullptr, kShown}, &M::SetPointCount, &M::GetPointCount};
    TextMethod m_regObjectName{this, {0x1100, nullptr, kShown}, 256, &M::SetDrawingObjectName, &M::GetDrawingObjectName};

    Method<_EKxLineStyle_t> m_regLineStyle = Part<_EKxLineStyle_t, &M::SelectedPen, &IKxPen::GetStyle, &IKxPen::SetStyle>({0x1200, nullptr, kShown});
    Method<int> m_regLineWidth = Part<int, &M::SelectedPen, &IKxPen::GetSize, &IKxPen::SetSize>({0x1204, nullptr, kShown});
    Method<unsigned int> m_regLineColor = Color<&M::SelectedPen, &IKxPen::GetColor, &IKxPen::SetColor>({0x1208, nullptr, kShown});
    Method<_EKxBackgroundMode_t> m_regBrushBkMode = Part<_EKxBackgroundMode_t, &M::SelectedBrush, &IKxBrush::GetBkMode, &IKxBrush::SetBkMode>({0x120C, nullptr, kShown});
    Method<unsigned int> m_regBrushBkColor = Color<&M::SelectedBrush, &IKxBrush::GetBkColor, &IKxBrush::SetBkColor>({0x1210, nullptr, kShown});
    Method<_EKxBrushStyle_t> m_regBrushStyle = Part<_EKxBrushStyle_t, &M::SelectedBrush, &IKxBrush::GetStyle, &IKxBrush::SetStyle>({0x1214, nullptr, kShown});
    Method<unsigned int> m_regBrushColor = Color<&M::SelectedBrush, &IKxBrush::GetColor, &IKxBrush::SetColor>({0x121C, nullptr, kShown});
    Method<_EKxPolyFillMode_t> m_regPolyFillMode = Part<_EKxPolyFillMode_t, &M::SelectedBrush, &IKxBrush::GetPolyFillMode, &IKxBrush::SetPolyFillMode>({0x1220, nullptr, kShown});
    Method<int> m_regFontHeight = Part<int, &M::SelectedFont, &IKxFont::GetHeight, &IKxFont::SetHeight>({0x1224, nullptr, kShown});
    Method<_EKxFontWeight_t> m_regFontWeight = Part<_EKxFontWeight_t, &M::SelectedFont, &IKxFont::GetWeight, &IKxFont::SetWeight>({0x1228, nullptr, kShown});
    Method<_EKxFontStyle_t> m_regFontStyle = Part<_EKxFontStyle_t, &M::SelectedFont, &IKxFont::GetStyle, &IKxFont::SetStyle>({0x122C, nullptr, kShown});
    Method<_EKxFontDecoration_t> m_regFontDecoration = Part<_EKxFontDecoration_t, &M::SelectedFont, &IKxFont::GetDecoration, &IKxFont::SetDecoration>({0x1230, nullptr, kShown});
    TextMethod m_regFontFamily = Family<&M::SelectedFont>({0x1240, nullptr, kShown});
    Method<unsigned int> m_regFontColor = Color<&M::SelectedFont, &IKxFont::GetColor, &IKxFont::SetColor>({0x1280, nullptr, kShown});
    Method<_EKxBackgroundMode_t> m_regFontBkMode = Part<_EKxBackgroundMode_t, &M::SelectedFont, &IKxFont::GetBkMode, &IKxFont::SetBkMode>({0x1284, nullptr, kShown});
    Method<unsigned int> m_regFontBkColor = Color<&M::SelectedFont, &IKxFont::GetBkColor, &IKxFont::SetBkColor>({0x1288, nullptr, kShown});

    Numeric<double> m_dConversionX{this, {0x1290, nullptr, kShown}, 1.0};
    Numeric<double> m_dConversionY{this, {0x1298, nullptr, kShown}, 1.0};
    Numeric<double> m_dConversionAngle{this, {0x12A0, nullptr, kShown}, 1.0};
    Text m_strLengthUnit{this, {0x1300, nullptr, kShown}, 64, "[pixels]"};
    Text m_strAreaUnit{this, {0x1340, nullptr, kShown}, 64, "[pixels 2]"};
    Text m_strAngleUnit{this, {0x1380, nullptr, kShown}, 64, "[degree]"};
    Numeric<unsigned int> m_nLengthPrecision{this, {0x13C0, nullptr, kShown}, 1};
    Numeric<unsigned int> m_nAreaPrecision{this, {0x13C4, nullptr, kShown}, 1};
    Numeric<unsigned int> m_nAnglePrecision{this, {0x13C8, nullptr, kShown}, 1};
    Numeric<unsigned int> m_nPositionPrecision{this, {0x13CC, nullptr, kShown}, 1};
    Method<_EKxDisplayText_t> m_regEnabledTexts{this, {0x1400, nullptr, kShown}, &M::SetDrawingObjectEnabledTexts, &M::GetDrawingObjectEnabledTexts};
    Method<_EKxDisplayText_t> m_regAvailableTexts{this, {0x1408, nullptr, 0, 0, GenApi::RO}, nullptr, &M::GetDrawingObjectAvailableTexts};

    Numeric<unsigned int> m_nGridHLines{this, {0x1410, "HorizontalGridLineCountReg", kShown}, 0};
    Numeric<unsigned int> m_nGridVLines{this, {0x1414, "VerticalGridLineCountReg", kShown}, 0};
    Method<_EKxLineStyle_t> m_regGridStyle = Part<_EKxLineStyle_t, &M::GridPen, &IKxPen::GetStyle, &IKxPen::SetStyle>({0x1418, "GridLineStyleReg", kShown});
    Method<int> m_regGridSize = Part<int, &M::GridPen, &IKxPen::GetSize, &IKxPen::SetSize>({0x141C, "GridLineWidthReg", kShown});
    Method<unsigned int> m_regGridColor = Color<&M::GridPen, &IKxPen::GetColor, &IKxPen::SetColor>({0x1420, "GridLineForegroundColorReg", kShown});
    Method<size_t> m_regRemove{this, {0x1430, nullptr, kShown, 0, kWriteOnly}, &M::mSetDrawingObjectRemove, nullptr};
    Method<size_t> m_regMoveToBack{this, {0x1438, nullptr, kShown, 0, kWriteOnly}, &M::mSetDrawingObjectMoveToBack, nullptr};
    Method<size_t> m_regMoveToFront{this, {0x1440, nullptr, kShown, 0, kWriteOnly}, &M::mSetDrawingObjectMoveToFront, nullptr};
    Method<_EKxLineEndcap_t> m_regGridEndcap = Part<_EKxLineEndcap_t, &M::GridPen, &IKxPen::GetEndcap, &IKxPen::SetEndcap>({0x1444, "GridLineEndcapReg", kShown});
    Method<_EKxLineJoin_t> m_regGridJoin = Part<_EKxLineJoin_t, &M::GridPen, &IKxPen::GetJoin, &IKxPen::SetJoin>({0x1448, "GridLineJoinReg", kShown});
    Method<_EKxLineEndcap_t> m_regLineEndcap = Part<_EKxLineEndcap_t, &M::SelectedPen, &IKxPen::GetEndcap, &IKxPen::SetEndcap>({0x144C, nullptr, kShown});
    Method<_EKxLineJoin_t> m_regLineJoin = Part<_EKxLineJoin_t, &M::SelectedPen, &IKxPen::GetJoin, &IKxPen::SetJoin>({0x1450, nullptr, kShown});
    Numeric<bool> m_bHideAll{this, {0x1454, nullptr, kShown}, false};

    Method<_EKxLineStyle_t> m_regDefaultLineStyle = Part<_EKxLineStyle_t, &M::DefaultPen, &IKxPen::GetStyle, &IKxPen::SetStyle>({0x1458, "DrawingDefaultLineStyleReg"});
    Method<int> m_regDefaultLineSize = Part<int, &M::DefaultPen, &IKxPen::GetSize, &IKxPen::SetSize>({0x145C, "DrawingDefaultLineWidthReg"});
    Method<unsigned int> m_regDefaultLineColor = Color<&M::DefaultPen, &IKxPen::GetColor, &IKxPen::SetColor>({0x1460, "DrawingDefaultLineForegroundColorReg"});
    Method<_EKxLineEndcap_t> m_regDefaultLineEndcap = Part<_EKxLineEndcap_t, &M::DefaultPen, &IKxPen::GetEndcap, &IKxPen::SetEndcap>({0x1464, "DrawingDefaultLineEndcapReg"});
    Method<_EKxLineJoin_t> m_regDefaultLineJoin = Part<_EKxLineJoin_t, &M::DefaultPen, &IKxPen::GetJoin, &IKxPen::SetJoin>({0x1468, "DrawingDefaultLineJoinReg"});
    Method<_EKxBackgroundMode_t> m_regDefaultBrushBkMode = Part<_EKxBackgroundMode_t, &M::DefaultBrush, &IKxBrush::GetBkMode, &IKxBrush::SetBkMode>({0x1470});
    Method<unsigned int> m_regDefaultBrushBkColor = Color<&M::DefaultBrush, &IKxBrush::GetBkColor, &IKxBrush::SetBkColor>({0x1474});
    Method<_EKxBrushStyle_t> m_regDefaultBrushStyle = Part<_EKxBrushStyle_t, &M::DefaultBrush, &IKxBrush::GetStyle, &IKxBrush::SetStyle>({0x1478});
    Method<unsigned int> m_regDefaultBrushColor = Color<&M::DefaultBrush, &IKxBrush::GetColor, &IKxBrush::SetColor>({0x147C});
    Method<_EKxPolyFillMode_t> m_regDefaultPolyFillMode = Part<_EKxPolyFillMode_t, &M::DefaultBrush, &IKxBrush::GetPolyFillMode, &IKxBrush::SetPolyFillMode>({0x1480});
    Method<int> m_regDefaultFontHeight = Part<int, &M::DefaultFont, &IKxFont::GetHeight, &IKxFont::SetHeight>({0x1484, nullptr, kShown});
    Method<_EKxFontWeight_t> m_regDefaultFontWeight = Part<_EKxFontWeight_t, &M::DefaultFont, &IKxFont::GetWeight, &IKxFont::SetWeight>({0x1488, nullptr, kShown});
    Method<_EKxFontStyle_t> m_regDefaultFontStyle = Part<_EKxFontStyle_t, &M::DefaultFont, &IKxFont::GetStyle, &IKxFont::SetStyle>({0x148C, nullptr, kShown});
    Method<_EKxFontDecoration_t> m_regDefaultFontDecoration = Part<_EKxFontDecoration_t, &M::DefaultFont, &IKxFont::GetDecoration, &IKxFont::SetDecoration>({0x1490, nullptr, kShown});
    TextMethod m_regDefaultFontFamily = Family<&M::DefaultFont>({0x14C0, nullptr, kShown});
    Method<unsigned int> m_regDefaultFontColor = Color<&M::DefaultFont, &IKxFont::GetColor, &IKxFont::SetColor>({0x1500, nullptr, kShown});
    Method<_EKxBackgroundMode_t> m_regDefaultFontBkMode = Part<_EKxBackgroundMode_t, &M::DefaultFont, &IKxFont::GetBkMode, &IKxFont::SetBkMode>({0x1504, nullptr, kShown});
    Method<unsigned int> m_regDefaultFontBkColor = Color<&M::DefaultFont, &IKxFont::GetBkColor, &IKxFont::SetBkColor>({0x1508, nullptr, kShown});

    // 4096 points of an object have addresses of their own.
    Array m_regPointX{this, {0x11000, nullptr, kShown}, 0x7FFF8, &M::SetPointX, &M::GetPointX};
    Array m_regPointY{this, {0x19000, nullptr, kShown}, 0x7FFF8, &M::SetPointY, &M::GetPointY};
    // clang-format on
};

} // namespace KxApi
