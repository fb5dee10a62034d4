// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <new>

namespace KxProducer
{

/// An object that is never destroyed, since threads of the consumer may still use it when the program ends.
/// It lies in the library's own memory, so that nothing is left behind when the library is unloaded.
template <class T>
class CImmortal
{
public:
    CImmortal() { new (m_bytes) T; }

    T& Get() { return *std::launder(reinterpret_cast<T*>(m_bytes)); }

private:
    alignas(T) unsigned char m_bytes[sizeof(T)];
};

} // namespace KxProducer
