// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// All of the base library: texts, exceptions, locks, helpers.

#include <Base/GCArray.h>
#include <Base/GCBadAlloc.h>
#include <Base/GCCompatibility.h>
#include <Base/GCException.h>
#include <Base/GCLinkage.h>
#include <Base/GCNamespace.h>
#include <Base/GCString.h>
#include <Base/GCStringVector.h>
#include <Base/GCSynch.h>
#include <Base/GCThreadSafety.h>
#include <Base/GCTypes.h>
#include <Base/GCUtilities.h>
