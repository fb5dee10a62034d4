// SPDX-License-Identifier: Apache-2.0
// A feature that starts something.
#pragma once

#include <GenApi/IValue.h>

namespace GenApi
{

/// A command. Any thread; calls take the lock of the node map.
struct GENAPI_DECL_ABSTRACT ICommand : virtual public IValue
{
    /// Starts the command.
    /// @param Verify checks the access mode: AccessException.
    virtual void Execute(bool Verify = true) = 0;
    virtual void operator()() = 0;

    /// Whether the device has finished; true as long as nothing was started. Reads the device while it runs.
    virtual bool IsDone(bool Verify = true) = 0;
};

/// Reference to a command.
template <class T>
class CCommandRefT : public CValueRefT<T>
{
public:
    void Execute(bool Verify = true) override { this->Target().Execute(Verify); }
    void operator()() override { this->Target()(); }
    bool IsDone(bool Verify = true) override { return this->Target().IsDone(Verify); }
};
typedef CCommandRefT<ICommand> CCommandRef;

} // namespace GenApi
