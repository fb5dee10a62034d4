// SPDX-License-Identifier: Apache-2.0
#include "runtime/CachedRead.h"
#include "runtime/NumberNode.h"
#include "runtime/TextConversion.h"
#include "runtime/ValidValues.h"

#include <Base/GCException.h>
#include <GenApi/IEnumeration.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace KxGenApi
{

FloatBase::FloatBase(NodeMap& map, NodeIndex index)
    : Node(map, index)
    , m_imposedMin(-std::numeric_limits<double>::infinity())
    , m_imposedMax(std::numeric_limits<double>::infinity())

{}

// ------------------------------------------------------------------------------------------ calls of a user

gcstring FloatBase::ToString(bool Verify, bool IgnoreCache)
{
    const Call call(*this, "ToString");
    const double value = ReadReal({Verify, IgnoreCache});
    const std::string text = BoundedText(value);
    return gcstring(text.data(), text.size());
}

void FloatBase::FromString(const gcstring& ValueStr, bool Verify)
{
    Change change(*this, "FromString");
    const std::optional<double> value = TextToReal(std::string_view(ValueStr.c_str(), ValueStr.size()));
    if (!value)
        throw KXNODE_ERROR(InvalidArgumentException)("'%s' is no number", ValueStr.c_str());
    WriteReal(*value, Verify, change);
    change.Finish();
}

void FloatBase::SetValue(double Value, bool Verify)
{
    Change change(*this, "SetValue");
    WriteReal(Value, Verify, change);
    change.Finish();
}

IFloat& FloatBase::operator=(double Value)
{
    SetValue(Value);
    return *this;
}

double FloatBase::GetValue(bool Verify, bool IgnoreCache)
{
    const Call call(*this, "GetValue");
    return ReadReal({Verify, IgnoreCache});
}

double FloatBase::GetMin()
{
    const Call call(*this, "GetMin");
    RequireAvailable();
    return RealMin();
}

double FloatBase::GetMax()
{
    const Call call(*this, "GetMax");
    RequireAvailable();
    return RealMax();
}

bool FloatBase::HasInc()
{
    const Call call(*this, "HasInc");
    return HasRealInc();
}

EIncMode FloatBase::GetIncMode()
{
    const Call call(*this, "GetIncMode");
    return IncMode();
}

double FloatBase::GetInc()
{
    const Call call(*this, "GetInc");
    RequireAvailable();
    return RealInc();
}

double_autovector_t FloatBase::GetListOfValidValues(bool bounded)
{
    const Call call(*this, "GetListOfValidValues");
    std::vector<double> values = ValidReals(*this);
    if (bounded && !values.empty()) {
        const double min = RealMin();
        const double max = RealMax();
        values.erase(
            std::remove_if(values.begin(), values.end(), [&](double v) { return v < min || v > max; }),
            values.end());
    }
    return double_autovector_t(std::move(values));
}

ERepresentation FloatBase::GetRepresentation()
{
    const Call call(*this, "GetRepresentation");
    return Representation();
}

gcstring FloatBase::GetUnit() const
{
    const Call call(*this, "GetUnit");
    return Unit();
}

EDisplayNotation FloatBase::GetDisplayNotation() const
{
    const Call call(*this, "GetDisplayNotation");
    return DisplayNotation();
}

int64_t FloatBase::GetDisplayPrecision() const
{
    const Call call(*this, "GetDisplayPrecision");
    return DisplayPrecision();
}

void FloatBase::ImposeMin(double Value)
{
    Change change(*this, "ImposeMin"); // not finished, so that nothing fires
    m_imposedMin = Value;
    change.Wrote(*this); // the value is what it was, but formulas may show the limit
}

void FloatBase::ImposeMax(double Value)
{
    Change change(*this, "ImposeMax"); // not finished, so that nothing fires
    m_imposedMax = Value;
    change.Wrote(*this); // the value is what it was, but formulas may show the limit
}

// ------------------------------------------------------------------------------------------ for other nodes

double FloatBase::ReadReal(ReadOptions options)
{
    ReadThroughCache(options, [&] { m_value = Fetch(options); });
    const double value = m_value;
    if (options.verify)
        CheckLimits(value);
    return value;
}

int64_t FloatBase::ReadInteger(ReadOptions options) { return RoundToInteger(*this, ReadReal(options)); }

void FloatBase::WriteInteger(int64_t value, bool verify, Change& change)
{
    WriteReal(static_cast<double>(value), verify, change);
}

void FloatBase::WriteReal(double value, bool verify, Change& change)
{
    const Level level(*this);
    RequireWritable(verify);
    if (verify)
        CheckLimits(value);
    Store(value, verify, change);
}

double FloatBase::RealMin()
{
    const Level level(*this);
    return std::max(Lowest(), m_imposedMin);
}

double FloatBase::RealMax()
{
    const Level level(*this);
    return std::min(Highest(), m_imposedMax);
}

int64_t FloatBase::IntegerMin() { return RoundToInteger(*this, RealMin()); }

int64_t FloatBase::IntegerMax() { return RoundToInteger(*this, RealMax()); }

int64_t FloatBase::IntegerInc() { return HasRealInc() ? RoundToInteger(*this, RealInc()) : 1; }

double FloatBase::RealInc() { throw KXNODE_ERROR(RuntimeException)("The node has no increment"); }

EIncMode FloatBase::IncMode()
{
    if (Find(Prop::ValidValueSet) != nullptr)
        return listIncrement;
    return HasRealInc() ? fixedIncrement : noIncrement;
}

/// Rounding to the shown digits must not carry a text over the limits, for then it could not be written back:
/// it moves inwards by half a unit of the last digit behind the point.
std::string FloatBase::BoundedText(double value)
{
    const EDisplayNotation notation = DisplayNotation();
    const int64_t precision = DisplayPrecision();
    std::string text = RealToText(value, notation, precision);
    const std::optional<double> shown = TextToReal(text);
    if (!shown)
        return text;
    const double half = UnitOfLastDigit(text) / 2;
    if (*shown > Highest())
        return RealToText(value - half, notation, precision);
    return *shown < Lowest() ? RealToText(value + half, notation, precision) : text;
}

void FloatBase::KeepWritten(double value)
{
    m_value = value;
    m_valueKnown = CachingMode() == WriteThrough;
}

void FloatBase::CheckLimits(double value)
{
    const double min = Lowest(); // NaN is neither below nor above, and passes
    if (value < min)
        throw KXNODE_ERROR(OutOfRangeException)("Value = %f must be equal or greater than Min = %f", value,
                                                min);
    const double max = Highest();
    if (value > max)
        throw KXNODE_ERROR(OutOfRangeException)("Value = %f must be equal or smaller than Max = %f", value,
                                                max);
}

} // namespace KxGenApi
