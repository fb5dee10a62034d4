// SPDX-License-Identifier: Apache-2.0
// Programs are built with warnings of their own. That none comes out of the templates of our headers, once
// they are made of something, is the test; nothing here is ever run.
#include <algorithm>
#include <functional>
#include <limits>
#include <list>
#include <locale>
#include <mutex>
#include <sstream>
#include <vector>

// Macros that the headers of others bring along.
#define min(a, b) ((a) < (b) ? (a) : (b))
#define max(a, b) ((a) > (b) ? (a) : (b))

#include <GenApi/PortWriteList.h>
#include <GenApi/ValueArrayAdapter.h>

#include <GenICam.h>

namespace
{
enum Mode
{
    Off,
    On
};
struct Registers
{
    uint32_t value;
};
} // namespace

template class GenApi::CBaseRefT<GenApi::IBase>;
template class GenApi::CValueRefT<GenApi::IValue>;
template class GenApi::CIntegerRefT<GenApi::IInteger>;
template class GenApi::CFloatRefT<GenApi::IFloat>;
template class GenApi::CBooleanRefT<GenApi::IBoolean>;
template class GenApi::CStringRefT<GenApi::IString>;
template class GenApi::CCommandRefT<GenApi::ICommand>;
template class GenApi::CRegisterRefT<GenApi::IRegister>;
template class GenApi::CCategoryRefT<GenApi::ICategory>;
template class GenApi::CEnumEntryRefT<GenApi::IEnumEntry>;
template class GenApi::CSelectorRefT<GenApi::ISelector>;
template class GenApi::CPortRefT<GenApi::IPort>;
template class GenApi::CPortRecorderRefT<GenApi::IPortRecorder>;
template class GenApi::CPortStackedRefT<GenApi::IPortStacked>;
template class GenApi::CEnumerationTRef<Mode>;
template class GenApi::CPointer<GenApi::IInteger>;
template class GenApi::CPointer<GenApi::IUserData, GenApi::INodeMap>;
template class GenApi::CNodeMapRefT<GenApi::CGeneric_XMLLoaderParams>;
template class GenApi::CTestPortStruct<Registers>;
template class GenApi::CValueArrayAdapter<GenApi::IBoolean, uint8_t, bool>;
template class GenApi::Function_NodeCallback<void (*)(GenApi::INode*)>;
template class GenApi::Member_NodeCallback<std::string, void (std::string::*)(GenApi::INode*)>;
template class GenApi::IDevFileStreamBase<char, std::char_traits<char>>;
template class GenApi::ODevFileStreamBase<char, std::char_traits<char>>;
template class GenICam::gcarray<uint8_t>;
template class GenICam::LockableObject<Registers>;
template class GenICam::ExceptionReporter<GenICam::RuntimeException>;
