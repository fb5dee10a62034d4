// SPDX-License-Identifier: Apache-2.0
#include "modules/CameraPort.h"

#include <arpa/inet.h>

#include <cstring>
#include <limits>
#include <vector>

namespace KxAravis
{
namespace
{

using KxProducer::Fail;
using KxProducer::Format;

constexpr size_t kRegister = 4;
// A camera behind a node map is asked for a few bytes at a time; descriptions are fetched elsewhere.
constexpr size_t kMaxAccess = 1 << 20;

/// A name for a file, of what a model's name leaves.
std::string FileName(const std::string& model)
{
    std::string name;
    for (const char c : model)
        name += isalnum(static_cast<unsigned char>(c)) ? c : '_';
    return (name.empty() ? "camera" : name) + ".xml";
}

} // namespace

CCameraPort::CCameraPort(KxProducer::CPortFacts facts, ArvDevice& device, bool isGev, bool canWrite)
    : CPort(std::move(facts), isGev ? KxProducer::EByteOrder::Big : KxProducer::EByteOrder::Little)
    , m_device(device)
    , m_isGev(isGev)
    , m_canWrite(canWrite)
{
    size_t size = 0;
    const char* const xml = arv_device_get_genicam_xml(&m_device, &size);
    if (!xml || size == 0)
        Fail(GenTL::GC_ERR_NOT_AVAILABLE, "Camera '%s' gives no description of itself", Facts().id.c_str());
    SetFile({FileName(Facts().model), std::string(xml, size)});
}

std::string CCameraPort::Place(const char* action, uint64_t address, size_t size) const
{
    return Format("Camera '%s' doesn't let %zu bytes at 0x%llx be %s", Facts().id.c_str(), size,
                  static_cast<unsigned long long>(address), action);
}

void CCameraPort::CheckAccess(const char* action, size_t size) const
{
    if (size == 0 || size > kMaxAccess)
        Fail(GenTL::GC_ERR_INVALID_PARAMETER, "%zu bytes can't be %s at once; 1 to %zu can", size, action,
             kMaxAccess);
    if (m_isLost)
        Fail(GenTL::GC_ERR_IO, "Camera '%s' doesn't answer any more", Facts().id.c_str());
}

void CCameraPort::ReadRegisters(uint64_t address, void* data, size_t size)
{
    CheckAccess("read", size);
    CArvError error;
    if (m_isGev && size == kRegister && address % kRegister == 0) {
        guint32 value = 0;
        arv_device_read_register(&m_device, address, &value, &error);
        value = htonl(value);
        std::memcpy(data, &value, sizeof value);
    } else if (m_isGev) {
        // GigE Vision reads whole registers.
        const uint64_t first = address & ~uint64_t{kRegister - 1};
        const uint64_t end = (address + size + kRegister - 1) & ~uint64_t{kRegister - 1};
        std::vector<char> registers(static_cast<size_t>(end - first));
        arv_device_read_memory(&m_device, first, static_cast<guint32>(registers.size()), registers.data(),
                               &error);
        std::memcpy(data, registers.data() + (address - first), size);
    } else {
        arv_device_read_memory(&m_device, address, static_cast<guint32>(size), data, &error);
    }
    error.Check(Place("read", address, size));
}

void CCameraPort::WriteRegisters(uint64_t address, const void* data, size_t size)
{
    CheckAccess("written", size);
    CArvError error;
    if (m_isGev && size == kRegister && address % kRegister == 0) {
        guint32 value = 0;
        std::memcpy(&value, data, sizeof value);
        arv_device_write_register(&m_device, address, ntohl(value), &error);
    } else {
        std::vector<char> copy(static_cast<const char*>(data), static_cast<const char*>(data) + size);
        arv_device_write_memory(&m_device, address, static_cast<guint32>(size), copy.data(), &error);
    }
    error.Check(Place("written", address, size));
}

} // namespace KxAravis
