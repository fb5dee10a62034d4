// SPDX-License-Identifier: Apache-2.0
#include <KxApi_TL/KxApi_Version.h>

namespace KxApi
{

int GetVersion() noexcept { return KXAPI_VERSION; }

const char* GetVersionText() noexcept { return KXAPI_VERSION_STRING; }

} // namespace KxApi
