// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace KxAravis
{

/// Has the system drop packets of an image stream that no camera sends but that would end the program:
/// libaravis takes the number of a trailer that comes first for the number of the image's packets, allocates
/// for as many, up to 64 gigabytes, and aborts when it doesn't get them.
/// libaravis doesn't give its sockets away, so they are looked for among the process's files: the UDP socket,
/// and the packet socket that the stream's thread opens where the system permits, whose own filter stays in
/// force.
/// @param nPort on which this process receives the stream.
void DropAbsurdPackets(uint16_t nPort);

} // namespace KxAravis
