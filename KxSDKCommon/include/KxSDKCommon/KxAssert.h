// SPDX-License-Identifier: Apache-2.0
// Assertions that hold in every build.
#pragma once

#include <KxSDKCommon/KxSDKCommonLinkage.h>

namespace KxApi
{
namespace Detail
{
/// Writes the text and the place to standard error and ends the process.
[[noreturn]] KXSDK_COMMON_API void FailAssertion(const char* szText, const char* szFile, int nLine) noexcept;
} // namespace Detail
} // namespace KxApi

/// Ends the process with the text when the condition doesn't hold. For contracts between parts of the SDK,
/// where to go on would corrupt memory; it stays in optimised builds for that reason.
#define KX_ASSERT(condition, szText)                                                                         \
    (static_cast<bool>(condition) ? void(0) : ::KxApi::Detail::FailAssertion(szText, __FILE__, __LINE__))
