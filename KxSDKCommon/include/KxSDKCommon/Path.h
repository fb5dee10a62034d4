// SPDX-License-Identifier: Apache-2.0
// Folders and temporary files.
#pragma once

#include <Base/GCString.h>
#include <KxSDKCommon/KxSDKCommonLinkage.h>

#include <cstdio>

// Both stand outside the namespace, where applications look for them.

/// Makes the folders of a path that are missing, readable by all and writable by owner and group as far as
/// the process's mask allows. With `bIsFilePath` the last part of the path is a file's name and not made.
/// Failures aren't reported: what is to lie in the folder then fails. Any thread.
KXSDK_COMMON_API void MakePath(const GenICam::gcstring& strPath, bool bIsFilePath);

/// Opens a temporary file for writing, which no folder shows and which vanishes when it is
/// closed. It lies in the folder of the environment variable TMPDIR, else in /tmp; a process that runs with
/// other rights than its user's always takes /tmp. Null when that folder can't be written or the name is too
/// long. Any thread.
/// @param szName beginning of the file's name, without slashes.
KXSDK_COMMON_API FILE* openTempFile(const char* szName);
