// SPDX-License-Identifier: Apache-2.0
#include "drawing/DrawingFormats_qt.h"

#include <algorithm>
#include <cstdio>
#include <string>

namespace KxApi
{
namespace
{

constexpr size_t kMaxUnit = 159;
constexpr unsigned int kMaxPrecision = 20; // of what the register takes, of which the feature allows 6

/// Each percent sign twice, but for those that come as a pair.
std::string EscapedUnit(const GenICam::gcstring& strUnit)
{
    const std::string strText = strUnit.c_str();
    std::string strEscaped;
    for (size_t i = 0; i < strText.size(); ++i) {
        if (strText[i] == '%') {
            strEscaped += '%';
            if (strText.compare(i, 2, "%%") == 0)
                ++i;
        }
        strEscaped += strText[i];
    }
    return strEscaped.substr(0, kMaxUnit);
}

template <size_t kSize>
void BuildFormat(char (&szFormat)[kSize], unsigned int nPrecision, const GenICam::gcstring& strUnit)
{
    std::snprintf(szFormat, kSize, "%%.%uf%s", std::min(nPrecision, kMaxPrecision),
                  EscapedUnit(strUnit).c_str());
}

} // namespace

void BuildFormats(const CValueTexts& texts, _KxOnDrawParamForDrawing_t& param)
{
    BuildFormat(param.szLengthFormat, texts.nLengthPrecision, texts.strLengthUnit);
    BuildFormat(param.szAreaFormat, texts.nAreaPrecision, texts.strAreaUnit);
    BuildFormat(param.szAngleFormat, texts.nAnglePrecision, texts.strAngleUnit);
    const unsigned int nPrecision = std::min(texts.nPositionPrecision, kMaxPrecision);
    std::snprintf(param.szPositionFormat, sizeof(param.szPositionFormat), "(%%.%uf, %%.%uf)", nPrecision,
                  nPrecision);
}

} // namespace KxApi
