// SPDX-License-Identifier: Apache-2.0
// The image window's own block of registers: one table, which its feature map mirrors.
#pragma once

#include <cstdint>

namespace KxApi
{

class CKxDisplayImageWnd;

/// Limits of settings, which the window checks and its registers tell.
inline constexpr uint32_t kMinRefreshInterval = 0;
inline constexpr uint32_t kMaxRefreshInterval = 1000;
inline constexpr double kMinMagnification = 0.01;
inline constexpr double kMaxMagnification = 64.0;

/// Reads or writes the register at an address; false when the block has none there that can be. Raises
/// OutOfRangeException when the length is less than the register's, and what the setting raises.
/// @param[in,out] pnLength bytes wanted, then bytes done.
bool ReadDisplayImageRegister(CKxDisplayImageWnd& window, unsigned char* pBuffer, int64_t nAddress,
                              int64_t* pnLength);
bool WriteDisplayImageRegister(CKxDisplayImageWnd& window, const unsigned char* pBuffer, int64_t nAddress,
                               int64_t* pnLength);

} // namespace KxApi
