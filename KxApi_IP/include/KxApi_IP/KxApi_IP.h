// SPDX-License-Identifier: Apache-2.0
// Image processing: everything that libKxApi_IP offers.
#pragma once

#include <KxApi_IP/IKxGraphDataBufferList.h>
#include <KxApi_IP/IKxPixelFormatConverter.h>
#include <KxApi_IP/IKxStillImageFiler.h>
#include <KxApi_IP/KxImageGraph.h>
