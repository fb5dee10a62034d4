// SPDX-License-Identifier: Apache-2.0
// Recording the writes of a port, and doing them again.
#pragma once

#include <GenApi/IPort.h>

namespace GenApi
{

/// A list of writes. One thread at a time.
struct GENAPI_DECL_ABSTRACT IPortWriteList
{
    /// Appends a write.
    virtual void Write(const void* pBuffer, int64_t Address, int64_t Length) = 0;
    /// Does all writes in their order, and keeps them.
    virtual void Replay(IPort* pPort) = 0;
    /// A number of the program's own, -1 at first.
    virtual void SetCookie(const int64_t Value) = 0;
    virtual int64_t GetCookie() = 0;

    virtual ~IPortWriteList() {}
};

/// A port that can take recorded writes. Any thread.
struct GENAPI_DECL_ABSTRACT IPortReplay : virtual public IPort
{
    /// Does all writes of a list, if there is one.
    /// @param Invalidate then invalidates the port and all that depends on it.
    virtual void Replay(IPortWriteList* pPortRecorder, bool Invalidate = true) = 0;
};

/// A port that can record; each port node can. Any thread.
struct GENAPI_DECL_ABSTRACT IPortRecorder : virtual public IPortReplay
{
    /// From now on appends the writes, which are done as ever, to a list, which must outlive the recording.
    virtual void StartRecording(IPortWriteList* pPortRecorder) = 0;
    virtual void StopRecording() = 0;
};

/// Reference to a recording port.
template <class T>
class CPortRecorderRefT : public CPortRefT<T>
{
public:
    void Replay(IPortWriteList* pPortRecorder, bool Invalidate = true) override
    {
        this->Target().Replay(pPortRecorder, Invalidate);
    }
    void StartRecording(IPortWriteList* pPortRecorder) override
    {
        this->Target().StartRecording(pPortRecorder);
    }
    void StopRecording() override { this->Target().StopRecording(); }
};
typedef CPortRecorderRefT<IPortRecorder> CPortRecorderRef;

} // namespace GenApi
