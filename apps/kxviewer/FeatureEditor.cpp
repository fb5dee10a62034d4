// SPDX-License-Identifier: Apache-2.0
#include "FeatureEditor.h"

#include "FeatureText.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QSlider>
#include <algorithm>
#include <cmath>
#include <optional>

using namespace GenApi;

namespace
{

constexpr int kSliderSteps = 1000;
constexpr double kLogarithmicFrom = 1000; // ratio of the limits
constexpr int kMostDecimals = 6;

QHBoxLayout* NewLayout(QWidget* pWidget)
{
    auto* const pLayout = new QHBoxLayout(pWidget);
    pLayout->setContentsMargins(0, 0, 0, 0);
    return pLayout;
}

/// An integer or a float as a number with limits.
struct NumberNode
{
    explicit NumberNode(INode& node)
        : pInteger(&node)
        , pFloat(&node)
    {}
    double Get() const
    {
        return pInteger.IsValid() ? static_cast<double>(pInteger->GetValue()) : pFloat->GetValue();
    }
    double Min() const
    {
        return pInteger.IsValid() ? static_cast<double>(pInteger->GetMin()) : pFloat->GetMin();
    }
    double Max() const
    {
        return pInteger.IsValid() ? static_cast<double>(pInteger->GetMax()) : pFloat->GetMax();
    }
    QString Unit() const { return TextOf(pInteger.IsValid() ? pInteger->GetUnit() : pFloat->GetUnit()); }
    bool IsLogarithmic() const
    {
        const ERepresentation eShown =
            pInteger.IsValid() ? pInteger->GetRepresentation() : pFloat->GetRepresentation();
        return Min() > 0 && (eShown == Logarithmic || Max() / Min() > kLogarithmicFrom);
    }
    int Decimals() const
    {
        if (pInteger.IsValid())
            return 0;
        const double dRange = Max() - Min(); // five digits of the range, as far as that goes
        return std::clamp(static_cast<int>(4 - std::log10(std::max(dRange, 1e-9))), 0, kMostDecimals);
    }
    void Set(double dValue) const
    {
        dValue = std::clamp(dValue, Min(), Max());
        if (!pInteger.IsValid())
            return pFloat->SetValue(dValue);
        const int64_t nMin = pInteger->GetMin();
        const int64_t nStep = std::max<int64_t>(pInteger->GetInc(), 1);
        pInteger->SetValue(nMin + (std::llround(dValue) - nMin) / nStep * nStep);
    }
    CIntegerPtr pInteger;
    CFloatPtr pFloat;
};

class NumberEditor final : public FeatureEditor
{
public:
    NumberEditor(INode& node, const QString& strTitle, QWidget* pParent)
        : FeatureEditor(node, pParent)
        , m_number(node)
        , m_pSlider(new QSlider(Qt::Horizontal, this))
        , m_pBox(new QDoubleSpinBox(this))
    {
        QHBoxLayout* const pLayout = NewLayout(this);
        pLayout->addWidget(m_pSlider, 1);
        pLayout->addWidget(m_pBox);
        m_pSlider->setRange(0, kSliderSteps);
        m_pSlider->setMinimumWidth(60);
        m_pSlider->setAccessibleName(strTitle);
        m_pBox->setAccessibleName(strTitle);
        m_pBox->setKeyboardTracking(false);
        m_pBox->setMinimumWidth(m_pBox->fontMetrics().horizontalAdvance("0000000.00 us") + 24);
        connect(m_pSlider, &QSlider::valueChanged, this, [this](int nStep) {
            if (!IsShowing())
                Write([&] { m_number.Set(ValueOf(nStep)); });
        });
        connect(m_pBox, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this, [this](double dValue) {
            if (!IsShowing())
                Write([&] { m_number.Set(dValue); });
        });
    }

private:
    void Show() override
    {
        const double dMin = m_number.Min();
        const double dMax = m_number.Max();
        const double dValue = m_number.Get();
        m_pBox->setDecimals(m_number.Decimals());
        m_pBox->setRange(dMin, dMax);
        m_pBox->setSingleStep(std::max((dMax - dMin) / 100, m_number.pInteger.IsValid() ? 1.0 : 0.0));
        m_pBox->setSuffix(m_number.Unit().isEmpty() ? QString() : " " + m_number.Unit());
        m_pBox->setToolTip(FeatureEditor::tr("From %1 to %2").arg(dMin).arg(dMax));
        m_pBox->setValue(dValue);
        if (!m_pSlider->isSliderDown())
            m_pSlider->setValue(StepOf(dValue));
    }
    double ValueOf(int nStep) const
    {
        const double dMin = m_number.Min();
        const double dMax = m_number.Max();
        const double dPart = nStep / static_cast<double>(kSliderSteps);
        return m_number.IsLogarithmic() ? dMin * std::pow(dMax / dMin, dPart) : dMin + (dMax - dMin) * dPart;
    }
    int StepOf(double dValue) const
    {
        const double dMin = m_number.Min();
        const double dMax = m_number.Max();
        if (dMax <= dMin)
            return 0;
        const double dPart = m_number.IsLogarithmic() ? std::log(dValue / dMin) / std::log(dMax / dMin)
                                                      : (dValue - dMin) / (dMax - dMin);
        return static_cast<int>(std::lround(dPart * kSliderSteps));
    }

    const NumberNode m_number;
    QSlider* const m_pSlider;
    QDoubleSpinBox* const m_pBox;
};

class ChoiceEditor final : public FeatureEditor
{
public:
    ChoiceEditor(INode& node, const QString& strTitle, QWidget* pParent)
        : FeatureEditor(node, pParent)
        , m_pNode(&node)
        , m_pBox(new QComboBox(this))
    {
        NewLayout(this)->addWidget(m_pBox);
        m_pBox->setAccessibleName(strTitle);
        connect(m_pBox, QOverload<int>::of(&QComboBox::activated), this, [this] {
            Write([this] { m_pNode->FromString(m_pBox->currentData().toString().toUtf8().constData()); });
        });
    }

private:
    void Show() override
    {
        QStringList names;
        QStringList titles;
        NodeList_t entries;
        m_pNode->GetEntries(entries);
        for (INode* const pEntry : entries) {
            if (!IsAvailable(pEntry))
                continue;
            names += TextOf(CEnumEntryPtr(pEntry)->GetSymbolic());
            titles += TextOf(pEntry->GetDisplayName());
        }
        if (names != m_names) {
            m_names = names;
            m_pBox->clear();
            for (int i = 0; i < names.size(); ++i)
                m_pBox->addItem(titles[i], names[i]);
        }
        m_pBox->setCurrentIndex(m_pBox->findData(TextOf(m_pNode->ToString())));
    }

    const CEnumerationPtr m_pNode;
    QComboBox* const m_pBox;
    QStringList m_names; // of the entries in the box
};

class SwitchEditor final : public FeatureEditor
{
public:
    SwitchEditor(INode& node, const QString& strTitle, QWidget* pParent)
        : FeatureEditor(node, pParent)
        , m_pNode(&node)
        , m_pBox(new QCheckBox(this))
    {
        NewLayout(this)->addWidget(m_pBox);
        m_pBox->setAccessibleName(strTitle);
        connect(m_pBox, &QCheckBox::clicked, this,
                [this](bool bOn) { Write([&] { m_pNode->SetValue(bOn); }); });
    }

private:
    void Show() override { m_pBox->setChecked(m_pNode->GetValue()); }

    const CBooleanPtr m_pNode;
    QCheckBox* const m_pBox;
};

} // namespace

FeatureEditor* FeatureEditor::Make(INode& node, const QString& strTitle, QWidget* pParent)
{
    FeatureEditor* pEditor = nullptr;
    switch (node.GetPrincipalInterfaceType()) {
    case intfIInteger:
    case intfIFloat:
        pEditor = new NumberEditor(node, strTitle, pParent);
        break;
    case intfIEnumeration:
        pEditor = new ChoiceEditor(node, strTitle, pParent);
        break;
    case intfIBoolean:
        pEditor = new SwitchEditor(node, strTitle, pParent);
        break;
    default:
        return nullptr;
    }
    pEditor->setObjectName(TextOf(node.GetName()));
    pEditor->setToolTip(TextOf(node.GetToolTip()));
    pEditor->Refresh();
    return pEditor;
}

void FeatureEditor::Refresh()
{
    m_bShowing = true;
    try {
        if (IsReadable(&m_node))
            Show();
        setEnabled(IsWritable(&m_node));
    } catch (const GenICam::GenericException&) {
        setEnabled(false);
    }
    m_bShowing = false;
}

void FeatureEditor::Write(const std::function<void()>& set)
{
    try {
        set();
    } catch (const GenICam::GenericException& e) {
        emit Refused(QString::fromUtf8(e.GetDescription()));
    }
    Refresh();
}
