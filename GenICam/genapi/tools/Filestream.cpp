// SPDX-License-Identifier: Apache-2.0
#include <Base/GCException.h>
#include <GenApi/Filestream.h>
#include <GenApi/INodeMap.h>
#include <GenApi/Pointer.h>
#include <GenApi/Synch.h>

#include <algorithm>
#include <chrono>
#include <thread>

namespace GenApi
{
namespace
{
constexpr std::chrono::seconds kTimeout(60); // erasing flash memory takes its time
constexpr std::chrono::milliseconds kPollPeriod(1);
constexpr int64_t kMaxBuffer = 1 << 20; // larger registers gain nothing
constexpr int64_t kRegisterGrain = 4;   // devices take whole quadlets
} // namespace

/// The features of file access control.
struct FileProtocolAdapter::Features
{
    explicit Features(INodeMap& map)
        : lock(map.GetLock())
        , selector(map.GetNode("FileSelector"))
        , operationSelector(map.GetNode("FileOperationSelector"))
        , execute(map.GetNode("FileOperationExecute"))
        , openMode(map.GetNode("FileOpenMode"))
        , buffer(map.GetNode("FileAccessBuffer"))
        , offset(map.GetNode("FileAccessOffset"))
        , length(map.GetNode("FileAccessLength"))
        , status(map.GetNode("FileOperationStatus"))
        , result(map.GetNode("FileOperationResult"))
        , size(map.GetNode("FileSize"))
    {}

    bool AreComplete() const
    {
        return selector.IsValid() && operationSelector.IsValid() && execute.IsValid() && openMode.IsValid() &&
               buffer.IsValid() && offset.IsValid() && length.IsValid() && status.IsValid() &&
               result.IsValid();
    }

    /// Whether the device has the file and the operation at all.
    bool Select(const char* fileName, const char* operation)
    {
        for (const auto& [choice, symbol] :
             {std::pair(&selector, fileName), std::pair(&operationSelector, operation)})
        {
            IEnumEntry* const entry = (*choice)->GetEntryByName(symbol);
            if (!entry || !IsAvailable(entry))
                return false;
            if ((*choice)->GetIntValue() != entry->GetValue())
                (*choice)->SetIntValue(entry->GetValue());
        }
        return true;
    }

    /// Runs the selected operation; tells whether the device reports success.
    bool Run()
    {
        execute->Execute();
        const auto deadline = std::chrono::steady_clock::now() + kTimeout;
        while (!execute->IsDone()) {
            if (std::chrono::steady_clock::now() > deadline)
                throw TIMEOUT_EXCEPTION("File '%s': operation '%s' has not ended after %lld s",
                                        selector->ToString().c_str(), operationSelector->ToString().c_str(),
                                        static_cast<long long>(kTimeout.count()));
            std::this_thread::sleep_for(kPollPeriod);
        }
        return status->ToString(false, true) == "Success";
    }

    [[noreturn]] void RaiseFailure(std::streamsize place)
    {
        throw RUNTIME_EXCEPTION("File '%s': operation '%s' at byte %lld ended with status '%s'",
                                selector->ToString().c_str(), operationSelector->ToString().c_str(),
                                static_cast<long long>(place), status->ToString().c_str());
    }

    /// Runs the selected operation on `count` bytes at `place`; returns the number of bytes that the device
    /// moved.
    std::streamsize Move(std::streamsize place, std::streamsize count)
    {
        offset->SetValue(place);
        length->SetValue(count);
        if (!Run())
            RaiseFailure(place);
        const int64_t moved = result->GetValue(false, true);
        if (moved < 0 || moved > count)
            throw RUNTIME_EXCEPTION("File '%s': the device reports %lld bytes moved of %lld",
                                    selector->ToString().c_str(), static_cast<long long>(moved),
                                    static_cast<long long>(count));
        return moved;
    }

    std::streamsize BufferSize()
    {
        return std::clamp<int64_t>(std::min(buffer->GetLength(), length->GetMax()), 1, kMaxBuffer);
    }

    CLock& lock;
    CEnumerationPtr selector, operationSelector;
    CCommandPtr execute;
    CEnumerationPtr openMode;
    CRegisterPtr buffer;
    CIntegerPtr offset, length;
    CEnumerationPtr status;
    CIntegerPtr result, size; // the size is optional
};

FileProtocolAdapter::FileProtocolAdapter() = default;
FileProtocolAdapter::~FileProtocolAdapter() = default;

bool FileProtocolAdapter::attach(INodeMap* pInterface)
{
    m_features.reset();
    if (!pInterface)
        return false;
    auto features = std::make_unique<Features>(*pInterface);
    if (features->AreComplete())
        m_features = std::move(features);
    return m_features != nullptr;
}

bool FileProtocolAdapter::openFile(const char* pFileName, std::ios_base::openmode mode)
{
    if (!m_features || !pFileName)
        return false;
    const AutoLock lock(m_features->lock);
    const bool in = (mode & std::ios_base::in) != 0, out = (mode & std::ios_base::out) != 0;
    if (!m_features->Select(pFileName, "Open"))
        return false;
    *m_features->openMode = GenICam::gcstring(in && out ? "ReadWrite" : out ? "Write" : "Read");
    return m_features->Run();
}

bool FileProtocolAdapter::closeFile(const char* pFileName)
{
    if (!m_features || !pFileName)
        return false;
    const AutoLock lock(m_features->lock);
    return m_features->Select(pFileName, "Close") && m_features->Run();
}

bool FileProtocolAdapter::deleteFile(const char* pFileName)
{
    if (!m_features || !pFileName)
        return false;
    const AutoLock lock(m_features->lock);
    return m_features->Select(pFileName, "Delete") && m_features->Run();
}

std::streamsize FileProtocolAdapter::write(const char* buf, std::streamsize offs, std::streamsize len,
                                           const char* pFileName)
{
    if (!m_features || !pFileName)
        return 0;
    const AutoLock lock(m_features->lock);
    if (!m_features->Select(pFileName, "Write"))
        return 0;
    const std::streamsize largest = m_features->BufferSize();
    std::vector<uint8_t> part;
    std::streamsize done = 0;
    while (done < len) {
        const std::streamsize count = std::min(len - done, largest);
        part.assign(buf + done, buf + done + count);
        const int64_t grains = (count + kRegisterGrain - 1) / kRegisterGrain * kRegisterGrain;
        part.resize(static_cast<size_t>(std::min(grains, m_features->buffer->GetLength())));
        m_features->buffer->Set(part.data(), static_cast<int64_t>(part.size()));
        const std::streamsize moved = m_features->Move(offs + done, count);
        done += moved;
        if (moved == 0)
            break; // the file is full
    }
    return done;
}

std::streamsize FileProtocolAdapter::read(char* buf, std::streamsize offs, std::streamsize len,
                                          const char* pFileName)
{
    if (!m_features || !pFileName)
        return 0;
    const AutoLock lock(m_features->lock);
    if (!m_features->Select(pFileName, "Read"))
        return 0;
    if (m_features->size.IsValid() && IsReadable(m_features->size->GetAccessMode()))
        len = std::min<std::streamsize>(len, m_features->size->GetValue(false, true) - offs);
    const std::streamsize largest = m_features->BufferSize();
    std::streamsize done = 0;
    while (done < len) {
        const std::streamsize count = std::min(len - done, largest);
        const std::streamsize moved = m_features->Move(offs + done, count);
        if (moved == 0)
            break; // the end of the file
        m_features->buffer->Get(reinterpret_cast<uint8_t*>(buf + done), moved, false, true);
        done += moved;
    }
    return done;
}

std::streamsize FileProtocolAdapter::getBufSize(const char*, std::ios_base::openmode)
{
    if (!m_features)
        return 0;
    const AutoLock lock(m_features->lock);
    return m_features->BufferSize();
}

} // namespace GenApi
