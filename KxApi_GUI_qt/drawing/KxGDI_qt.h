// SPDX-License-Identifier: Apache-2.0
// Pens, brushes and fonts in the SDK's own terms, for the drawing tool, its dialogs and the graph window.
#pragma once

#include <Base/GCString.h>
#include <KxApi_GUI/KxDrawingTypes.h>

#include <QBrush>
#include <QColor>
#include <QFont>
#include <QPen>
#include <QString>
#include <memory>

namespace KxApi
{

/// Colours cross features and public interfaces as red | green << 8 | blue << 16, without alpha.
unsigned int ToPackedColor(const QColor& color);
QColor FromPackedColor(unsigned int nColor);

/// Qt's values for those of the SDK; what the SDK has no name for gets the one that is named first.
Qt::PenStyle ToQt(_EKxLineStyle_t eStyle);
Qt::PenCapStyle ToQt(_EKxLineEndcap_t eEndcap);
Qt::PenJoinStyle ToQt(_EKxLineJoin_t eJoin);
Qt::BrushStyle ToQt(_EKxBrushStyle_t eStyle);
Qt::FillRule ToQt(_EKxPolyFillMode_t eMode);

/// Raise OutOfRangeException for a style that there isn't.
void CheckLineStyle(_EKxLineStyle_t eStyle);
void CheckBrushStyle(_EKxBrushStyle_t eStyle);

/// The root of the three. None has a lock of its own.
struct IKxGDIBase
{
    virtual QColor GetColor() const = 0;
    virtual void SetColor(QColor color) = 0;
    /// Notes that what was built for Qt no longer holds.
    virtual void Updated() = 0;

protected:
    ~IKxGDIBase() = default;
};

struct IKxPen : IKxGDIBase
{
    virtual _EKxLineStyle_t GetStyle() const = 0;
    /// Raises OutOfRangeException for a style above 5.
    virtual void SetStyle(_EKxLineStyle_t eStyle) = 0;
    /// Pixels of the screen; 0 is no line.
    virtual int GetSize() const = 0;
    virtual void SetSize(int nSize) = 0;
    virtual _EKxLineEndcap_t GetEndcap() const = 0;
    virtual void SetEndcap(_EKxLineEndcap_t eEndcap) = 0;
    virtual _EKxLineJoin_t GetJoin() const = 0;
    virtual void SetJoin(_EKxLineJoin_t eJoin) = 0;

protected:
    ~IKxPen() = default;
};

struct IKxBrush : IKxGDIBase
{
    virtual _EKxBrushStyle_t GetStyle() const = 0;
    /// Raises OutOfRangeException for a style above 7.
    virtual void SetStyle(_EKxBrushStyle_t eStyle) = 0;
    virtual QColor GetBkColor() const = 0;
    virtual void SetBkColor(QColor color) = 0;
    virtual _EKxBackgroundMode_t GetBkMode() const = 0;
    virtual void SetBkMode(_EKxBackgroundMode_t eMode) = 0;
    virtual _EKxPolyFillMode_t GetPolyFillMode() const = 0;
    virtual void SetPolyFillMode(_EKxPolyFillMode_t eMode) = 0;

protected:
    ~IKxBrush() = default;
};

struct IKxFont : IKxGDIBase
{
    /// Pixels of the screen.
    virtual int GetHeight() const = 0;
    virtual void SetHeight(int nHeight) = 0;
    virtual _EKxFontWeight_t GetWeight() const = 0;
    virtual void SetWeight(_EKxFontWeight_t eWeight) = 0;
    virtual _EKxFontStyle_t GetStyle() const = 0;
    virtual void SetStyle(_EKxFontStyle_t eStyle) = 0;
    virtual _EKxFontDecoration_t GetDecoration() const = 0;
    virtual void SetDecoration(_EKxFontDecoration_t eDecoration) = 0;
    /// UTF-8; empty for the family of the application.
    virtual GenICam::gcstring GetFamily() const = 0;
    virtual void SetFamily(const GenICam::gcstring& strFamily) = 0;
    virtual _EKxBackgroundMode_t GetBkMode() const = 0;
    virtual void SetBkMode(_EKxBackgroundMode_t eMode) = 0;
    virtual QColor GetBkColor() const = 0;
    virtual void SetBkColor(QColor color) = 0;
    virtual QFont* GetObject() = 0;

protected:
    ~IKxFont() = default;
};

/// The colour, and whether what was built for Qt still holds.
template <class Interface>
class CKxGDIBase : public Interface
{
public:
    QColor GetColor() const override { return m_color; }
    void SetColor(QColor color) override { Change(m_color, color); }
    void Updated() override { m_bDirty = true; }

protected:
    explicit CKxGDIBase(const QColor& color)
        : m_color(color)
    {}
    CKxGDIBase(const CKxGDIBase& other)
        : Interface(other)
        , m_color(other.m_color)
    {}
    CKxGDIBase& operator=(const CKxGDIBase&) = delete;
    virtual ~CKxGDIBase() = default;

    template <class T>
    void Change(T& member, const T& value)
    {
        if (member == value)
            return;
        member = value;
        this->Updated();
    }
    /// The Qt object, made at first use and brought up to date by `fill` when a setting has changed.
    template <class T, class Fill>
    T* Built(std::unique_ptr<T>& pObject, Fill fill)
    {
        if (!pObject)
            pObject = std::make_unique<T>();
        else if (!m_bDirty)
            return pObject.get();
        m_bDirty = false;
        fill(*pObject);
        return pObject.get();
    }

private:
    bool m_bDirty = false;
    QColor m_color;
};

/// Copies have the same settings and build their own Qt object.
class CKxPen : public CKxGDIBase<IKxPen>
{
public:
    explicit CKxPen(const QColor& color = Qt::black, _EKxLineStyle_t eStyle = KxLineStyle_Solid,
                    int nSize = 1);
    CKxPen(const CKxPen& other);

    _EKxLineStyle_t GetStyle() const override { return m_eStyle; }
    void SetStyle(_EKxLineStyle_t eStyle) override;
    int GetSize() const override { return m_nSize; }
    void SetSize(int nSize) override { Change(m_nSize, nSize); }
    _EKxLineEndcap_t GetEndcap() const override { return m_eEndcap; }
    void SetEndcap(_EKxLineEndcap_t eEndcap) override { Change(m_eEndcap, eEndcap); }
    _EKxLineJoin_t GetJoin() const override { return m_eJoin; }
    void SetJoin(_EKxLineJoin_t eJoin) override { Change(m_eJoin, eJoin); }

    /// Takes all settings over.
    void Assign(const IKxPen& other);

    QPen* GetHPen();

private:
    std::unique_ptr<QPen> m_pPen;
    _EKxLineStyle_t m_eStyle;
    int m_nSize;
    _EKxLineEndcap_t m_eEndcap = KxLineEndcap_Round;
    _EKxLineJoin_t m_eJoin = KxLineJoin_Round;
};

/// See CKxPen.
class CKxBrush : public CKxGDIBase<IKxBrush>
{
public:
    explicit CKxBrush(const QColor& color = Qt::black, _EKxBrushStyle_t eStyle = KxBrushStyle_Solid);
    CKxBrush(const CKxBrush& other);

    _EKxBrushStyle_t GetStyle() const override { return m_eStyle; }
    void SetStyle(_EKxBrushStyle_t eStyle) override;
    // The rest is read when something is painted.
    QColor GetBkColor() const override { return m_colorBk; }
    void SetBkColor(QColor color) override { m_colorBk = color; }
    _EKxBackgroundMode_t GetBkMode() const override { return m_eBkMode; }
    void SetBkMode(_EKxBackgroundMode_t eMode) override { m_eBkMode = eMode; }
    _EKxPolyFillMode_t GetPolyFillMode() const override { return m_ePolyFillMode; }
    void SetPolyFillMode(_EKxPolyFillMode_t eMode) override { m_ePolyFillMode = eMode; }

    void Assign(const IKxBrush& other);

    QBrush* GetHBrush();

private:
    std::unique_ptr<QBrush> m_pBrush;
    _EKxBrushStyle_t m_eStyle;
    _EKxBackgroundMode_t m_eBkMode = KxBackgroundMode_Transparent;
    QColor m_colorBk = Qt::white;
    _EKxPolyFillMode_t m_ePolyFillMode = KxPolyFillMode_Alternate;
};

/// See CKxPen.
class CKxFont : public CKxGDIBase<IKxFont>
{
public:
    explicit CKxFont(const QColor& color = Qt::black, int nHeight = 24);
    CKxFont(const CKxFont& other);

    int GetHeight() const override { return m_nHeight; }
    void SetHeight(int nHeight) override;
    _EKxFontWeight_t GetWeight() const override;
    void SetWeight(_EKxFontWeight_t eWeight) override;
    _EKxFontStyle_t GetStyle() const override;
    void SetStyle(_EKxFontStyle_t eStyle) override;
    _EKxFontDecoration_t GetDecoration() const override;
    void SetDecoration(_EKxFontDecoration_t eDecoration) override;
    GenICam::gcstring GetFamily() const override;
    void SetFamily(const GenICam::gcstring& strFamily) override;
    _EKxBackgroundMode_t GetBkMode() const override { return m_eBkMode; }
    void SetBkMode(_EKxBackgroundMode_t eMode) override { m_eBkMode = eMode; }
    QColor GetBkColor() const override { return m_colorBk; }
    void SetBkColor(QColor color) override { m_colorBk = color; }
    QFont* GetObject() override;

    void Assign(const IKxFont& other);

private:
    std::unique_ptr<QFont> m_pFont;
    _EKxBackgroundMode_t m_eBkMode = KxBackgroundMode_Transparent;
    QColor m_colorBk = Qt::white;
    int m_nHeight;
    int m_nWeight = QFont::Normal;
    int m_nStyle = QFont::StyleNormal;
    bool m_bUnderline = false;
    bool m_bStrikeOut = false;
    QString m_strFamily;
};

} // namespace KxApi
