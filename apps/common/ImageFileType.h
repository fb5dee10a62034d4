// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KxApi_IP/IKxStillImageFiler.h>

#include <string>

namespace KxApps
{

/// The file type that the name's ending means, whatever its case. Raises InvalidArgumentException that lists
/// the known ones.
KxApi::EKxStillImageFileType_t FileTypeOf(const std::string& fileName);

/// The usual ending of the type's files, with the dot.
const char* EndingOf(KxApi::EKxStillImageFileType_t type);

} // namespace KxApps
