// SPDX-License-Identifier: Apache-2.0
#include <KxSDKCommon/KxAssert.h>

#include <cstdio>
#include <cstdlib>

void KxApi::Detail::FailAssertion(const char* szText, const char* szFile, int nLine) noexcept
{
    std::fprintf(stderr, "%s:%d: Assertion `%s' failed.\n", szFile, nLine, szText);
    std::fflush(stderr);
    std::abort();
}
