// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KxApi_IP/IKxStillImageFiler.h>

#include <string>

namespace Kx
{

/// The file type that the name's ending means, whatever its case. Raises InvalidArgumentException that lists
/// the known ones.
KxApi::EKxStillImageFileType_t FileTypeOf(const std::string& fileName);

} // namespace Kx
