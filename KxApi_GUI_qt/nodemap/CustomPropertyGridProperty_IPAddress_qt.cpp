// SPDX-License-Identifier: Apache-2.0
#include "nodemap/CustomPropertyGridProperty_IPAddress_qt.h"

#include "nodemap/NodePage_qt.h"
#include "nodemap/SampleCode_qt.h"

#include <arpa/inet.h>

namespace KxApi
{

uint32_t CCustomPropertyGridProperty_IPAddress::StringToIntegerValue(const QString& strText)
{
    return ntohl(inet_addr(strText.toLatin1().constData()));
}

QString CCustomPropertyGridProperty_IPAddress::GetInterfaceSpecificDescription()
{
    return Fill("<tr><td width=\"30%\">Value</td><td width=\"70%\">%1</td></tr>",
                {QString::number(Value()->GetValue())}) +
           IntegerRows(*Value());
}

QString CCustomPropertyGridProperty_IPAddress::GetInterfaceSpecificDescriptionSampleCode()
{
    return SampleCode(ESampleCode::IPAddress, IsNodeWritable());
}

} // namespace KxApi
