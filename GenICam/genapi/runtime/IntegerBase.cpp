// SPDX-License-Identifier: Apache-2.0
#include "runtime/CachedRead.h"
#include "runtime/NumberNode.h"
#include "runtime/TextConversion.h"
#include "runtime/ValidValues.h"

#include <Base/GCException.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace KxGenApi
{

IntegerBase::IntegerBase(NodeMap& map, NodeIndex index)
    : Node(map, index)
    , m_imposedMin(std::numeric_limits<int64_t>::min())
    , m_imposedMax(std::numeric_limits<int64_t>::max())

{}

// ------------------------------------------------------------------------------------------ calls of a user

gcstring IntegerBase::ToString(bool Verify, bool IgnoreCache)
{
    const Call call(*this, "ToString");
    const std::string text = IntegerToText(ReadInteger({Verify, IgnoreCache}), Representation());
    return gcstring(text.data(), text.size());
}

void IntegerBase::FromString(const gcstring& ValueStr, bool Verify)
{
    Change change(*this, "FromString");
    const std::string_view text(ValueStr.c_str(), ValueStr.size());
    const std::optional<int64_t> value = TextToInteger(text, Representation());
    if (!value)
        throw KXNODE_ERROR(InvalidArgumentException)("'%s' is no integer of this node", ValueStr.c_str());
    WriteInteger(*value, Verify, change);
    change.Finish();
}

void IntegerBase::SetValue(int64_t Value, bool Verify)
{
    Change change(*this, "SetValue");
    WriteInteger(Value, Verify, change);
    change.Finish();
}

IInteger& IntegerBase::operator=(int64_t Value)
{
    SetValue(Value);
    return *this;
}

int64_t IntegerBase::GetValue(bool Verify, bool IgnoreCache)
{
    const Call call(*this, "GetValue");
    return ReadInteger({Verify, IgnoreCache});
}

int64_t IntegerBase::GetMin()
{
    const Call call(*this, "GetMin");
    RequireAvailable();
    return IntegerMin();
}

int64_t IntegerBase::GetMax()
{
    const Call call(*this, "GetMax");
    RequireAvailable();
    return IntegerMax();
}

EIncMode IntegerBase::GetIncMode()
{
    const Call call(*this, "GetIncMode");
    return IncMode();
}

int64_t IntegerBase::GetInc()
{
    const Call call(*this, "GetInc");
    RequireAvailable();
    return IntegerInc();
}

int64_autovector_t IntegerBase::GetListOfValidValues(bool bounded)
{
    const Call call(*this, "GetListOfValidValues");
    std::vector<int64_t> values = ValidIntegers(*this);
    if (bounded && !values.empty()) {
        const int64_t min = IntegerMin();
        const int64_t max = IntegerMax();
        values.erase(
            std::remove_if(values.begin(), values.end(), [&](int64_t v) { return v < min || v > max; }),
            values.end());
    }
    return int64_autovector_t(std::move(values));
}

ERepresentation IntegerBase::GetRepresentation()
{
    const Call call(*this, "GetRepresentation");
    return Representation();
}

gcstring IntegerBase::GetUnit()
{
    const Call call(*this, "GetUnit");
    return Unit();
}

void IntegerBase::ImposeMin(int64_t Value)
{
    Change change(*this, "ImposeMin"); // not finished, so that nothing fires
    m_imposedMin = Value;
    change.Wrote(*this); // the value is what it was, but formulas may show the limit
}

void IntegerBase::ImposeMax(int64_t Value)
{
    Change change(*this, "ImposeMax"); // not finished, so that nothing fires
    m_imposedMax = Value;
    change.Wrote(*this); // the value is what it was, but formulas may show the limit
}

// ------------------------------------------------------------------------------------------ for other nodes

int64_t IntegerBase::ReadInteger(ReadOptions options)
{
    ReadThroughCache(options, [&] { m_value = Fetch(options); });
    const int64_t value = m_value;
    if (options.verify)
        CheckLimits(value);
    return value;
}

void IntegerBase::WriteInteger(int64_t value, bool verify, Change& change)
{
    const Level level(*this);
    RequireWritable(verify);
    if (verify)
        CheckLimits(value);
    Store(value, verify, change);
}

void IntegerBase::WriteReal(double value, bool verify, Change& change)
{
    int64_t integer = RoundToInteger(*this, value);
    const int64_t inc = IntegerInc();
    if (inc > 1) { // down to the grid, which begins at the minimum
        const int64_t min = IntegerMin();
        if (integer > min) {
            const uint64_t distance = static_cast<uint64_t>(integer) - static_cast<uint64_t>(min);
            integer =
                static_cast<int64_t>(static_cast<uint64_t>(min) +
                                     distance / static_cast<uint64_t>(inc) * static_cast<uint64_t>(inc));
        }
    }
    WriteInteger(integer, verify, change);
}

int64_t IntegerBase::IntegerMin()
{
    const Level level(*this);
    return std::max(Lowest(), m_imposedMin);
}

int64_t IntegerBase::IntegerMax()
{
    const Level level(*this);
    return std::min(Highest(), m_imposedMax);
}

EIncMode IntegerBase::IncMode()
{
    return Find(Prop::ValidValueSet) != nullptr ? listIncrement : fixedIncrement;
}

// What was imposed on this node binds those who show it, not its own users.
void IntegerBase::CheckLimits(int64_t value)
{
    const int64_t min = Lowest();
    if (value < min) {
        throw KXNODE_ERROR(OutOfRangeException)("Value = %lld must be equal or greater than Min = %lld",
                                                static_cast<long long>(value), static_cast<long long>(min));
    }
    const int64_t max = Highest();
    if (value > max) {
        throw KXNODE_ERROR(OutOfRangeException)("Value = %lld must be equal or smaller than Max = %lld",
                                                static_cast<long long>(value), static_cast<long long>(max));
    }
    if (IncMode() == listIncrement)
        return; // the list is told to those who ask, but not enforced
    const int64_t inc = IntegerInc();
    if (inc <= 0) {
        throw KXNODE_ERROR(LogicalErrorException)("Inc = %lld must be positive", static_cast<long long>(inc));
    }
    if ((static_cast<uint64_t>(value) - static_cast<uint64_t>(min)) % static_cast<uint64_t>(inc) != 0) {
        throw KXNODE_ERROR(OutOfRangeException)(
            "Value = %lld must be Min = %lld plus a multiple of Inc = %lld", static_cast<long long>(value),
            static_cast<long long>(min), static_cast<long long>(inc));
    }
}

} // namespace KxGenApi
