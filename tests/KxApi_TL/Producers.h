// SPDX-License-Identifier: Apache-2.0
// The fake producers' files, and what is in them when they are loaded.
#pragma once

#include "producers/FakeCamera.h"

#include <dlfcn.h>

#include <string>

namespace KxTest
{

inline std::string Fake(const std::string& name)
{
    return std::string(KXAPI_FAKE_PRODUCERS) + "/Fake" + name + ".cti";
}

/// A producer that stays loaded while a test has it in hand.
class LoadedProducer
{
public:
    explicit LoadedProducer(const std::string& name)
        : m_library(dlopen(Fake(name).c_str(), RTLD_NOW))
    {}
    LoadedProducer(const LoadedProducer&) = delete;
    LoadedProducer& operator=(const LoadedProducer&) = delete;
    ~LoadedProducer() { dlclose(m_library); }

    void Call(const char* szName) const { reinterpret_cast<void (*)()>(dlsym(m_library, szName))(); }
    FakeCamera& Camera() const
    {
        return *reinterpret_cast<decltype(&KxFakeCamera)>(dlsym(m_library, "KxFakeCamera"))();
    }

private:
    void* const m_library;
};

} // namespace KxTest
