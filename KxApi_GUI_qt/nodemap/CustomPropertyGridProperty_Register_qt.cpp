// SPDX-License-Identifier: Apache-2.0
#include "nodemap/CustomPropertyGridProperty_Register_qt.h"

#include "nodemap/NodePage_qt.h"
#include "nodemap/SampleCode_qt.h"

#include <algorithm>
#include <array>

namespace KxApi
{
namespace
{

constexpr int64_t kShownBytes = 16;

} // namespace

void CCustomPropertyGridProperty_Register::ShowValue(GenApi::EAccessMode eMode)
{
    if (!GenApi::IsReadable(eMode))
        return;
    const int64_t nLength = Value()->GetLength();
    std::array<uint8_t, kShownBytes> bytes{};
    if (nLength > 0)
        Value()->Get(bytes.data(), std::min(nLength, kShownBytes), false, false);
    QString strText;
    for (const uint8_t nByte : bytes)
        strText += QString::asprintf(strText.isEmpty() ? "%02X" : " %02X", nByte);
    if (nLength > kShownBytes)
        strText += " ...";
    Label().setText(strText);
}

void CCustomPropertyGridProperty_Register::ApplyDisplayRule(GenApi::EAccessMode eMode)
{
    // Told once in a row's life: when the register goes again later, its last bytes stay.
    if (GenApi::IsAvailable(eMode) || !m_bAvailable)
        return;
    m_bAvailable = false;
    Label().setText(tr("Not Available"));
}

QString CCustomPropertyGridProperty_Register::GetInterfaceSpecificDescription()
{
    return Fill("<tr><td width=\"30%\">Length</td><td width=\"70%\">%1</td></tr>",
                {QString::number(Value()->GetLength())});
}

QString CCustomPropertyGridProperty_Register::GetInterfaceSpecificDescriptionSampleCode()
{
    return SampleCode(ESampleCode::Register, IsNodeWritable());
}

} // namespace KxApi
