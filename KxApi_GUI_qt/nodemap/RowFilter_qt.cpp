// SPDX-License-Identifier: Apache-2.0
#include "nodemap/RowFilter_qt.h"

#include <algorithm>

namespace KxApi
{
namespace
{

bool IsPlainPart(const QString& strPart)
{
    static const QString kSpecial = "\\^$.*+?()[]{}";
    return std::none_of(strPart.begin(), strPart.end(), [](QChar ch) { return kSpecial.contains(ch); });
}

/// Counted repetitions within each other make the matcher as large as their product. This bounds it: the
/// product of all counts, whether within each other or not.
bool IsAbsurd(const QString& strPattern)
{
    constexpr int64_t kMostStates = 20000;
    int64_t nStates = std::max(1, strPattern.size());
    int64_t nCount = 0;
    bool bInBraces = false;
    for (const QChar ch : strPattern) {
        if (ch == '{' || (bInBraces && (ch == ',' || ch == '}'))) {
            nStates *= std::max<int64_t>(1, nCount);
            nCount = 0;
            bInBraces = ch != '}';
        } else if (bInBraces && ch.isDigit()) {
            nCount = std::min(kMostStates, nCount * 10 + ch.digitValue());
        }
        if (nStates > kMostStates)
            return true;
    }
    return false;
}

} // namespace

CRowFilter::CRowFilter(const QString& strText, bool bRegex)
{
    if (bRegex) {
        SetPattern(strText);
        return;
    }
    m_listParts = strText.split('|', Qt::SkipEmptyParts);
    if (!strText.contains('|') || std::all_of(m_listParts.begin(), m_listParts.end(), IsPlainPart))
        return;
    QString strPattern;
    for (const QString& strPart : m_listParts)
        strPattern += "(.*" + strPart + ".*)|";
    SetPattern(strPattern);
}

void CRowFilter::SetPattern(const QString& strPattern)
{
    m_bPattern = true;
    m_bNothing = IsAbsurd(strPattern);
    if (!m_bNothing)
        m_pattern = QRegExp(strPattern, Qt::CaseInsensitive);
}

bool CRowFilter::Matches(const QString& strRow) const
{
    if (m_bPattern)
        return !m_bNothing && m_pattern.exactMatch(strRow);
    return std::any_of(m_listParts.begin(), m_listParts.end(),
                       [&](const QString& strPart) { return strRow.contains(strPart, Qt::CaseInsensitive); });
}

} // namespace KxApi
