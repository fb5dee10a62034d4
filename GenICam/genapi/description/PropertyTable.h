// SPDX-License-Identifier: Apache-2.0
// All elements that nodes may have, known at compile time.
#pragma once

#include "description/Schema.h"

#include <GenApi/Types.h>

#include <iterator>

namespace KxGenApi
{
namespace Tables
{

inline constexpr Word kSigns[] = {{"Unsigned", GenApi::Unsigned}, {"Signed", GenApi::Signed}};
inline constexpr Word kAccessModes[] = {{"RW", GenApi::RW}, {"RO", GenApi::RO}, {"WO", GenApi::WO}};
inline constexpr Word kVisibilities[] = {{"Beginner", GenApi::Beginner},
                                         {"Expert", GenApi::Expert},
                                         {"Guru", GenApi::Guru},
                                         {"Invisible", GenApi::Invisible}};
inline constexpr Word kCachingModes[] = {{"WriteThrough", GenApi::WriteThrough},
                                         {"NoCache", GenApi::NoCache},
                                         {"WriteAround", GenApi::WriteAround}};
inline constexpr Word kRepresentations[] = {
    {"Linear", GenApi::Linear},        {"Logarithmic", GenApi::Logarithmic},
    {"Boolean", GenApi::Boolean},      {"PureNumber", GenApi::PureNumber},
    {"HexNumber", GenApi::HexNumber},  {"IPV4Address", GenApi::IPV4Address},
    {"MACAddress", GenApi::MACAddress}};
inline constexpr Word kEndianesses[] = {{"LittleEndian", GenApi::LittleEndian},
                                        {"BigEndian", GenApi::BigEndian}};
inline constexpr Word kYesNo[] = {{"Yes", GenApi::Yes}, {"No", GenApi::No}};
inline constexpr Word kSlopes[] = {{"Increasing", GenApi::Increasing},
                                   {"Decreasing", GenApi::Decreasing},
                                   {"Varying", GenApi::Varying},
                                   {"Automatic", GenApi::Automatic}};
inline constexpr Word kNotations[] = {
    {"Automatic", GenApi::fnAutomatic}, {"Fixed", GenApi::fnFixed}, {"Scientific", GenApi::fnScientific}};

template <size_t N>
constexpr WordList ListOf(const Word (&words)[N])
{
    return {words, N};
}
inline constexpr WordList kSignList = ListOf(kSigns), kAccessList = ListOf(kAccessModes),
                          kVisibilityList = ListOf(kVisibilities), kCachingList = ListOf(kCachingModes),
                          kRepresentationList = ListOf(kRepresentations), kEndianList = ListOf(kEndianesses),
                          kYesNoList = ListOf(kYesNo), kSlopeList = ListOf(kSlopes),
                          kNotationList = ListOf(kNotations);

inline constexpr uint8_t kValueEdge = kInvalidates | kEvaluates;

constexpr PropertyInfo Plain(std::string_view name, Prop prop, ValueKind kind)
{
    return {name, prop, kind, Target::Any, kNoEdge, nullptr};
}
constexpr PropertyInfo Words(std::string_view name, Prop prop, const WordList& words)
{
    return {name, prop, ValueKind::Word, Target::Any, kNoEdge, &words};
}
constexpr PropertyInfo Ref(std::string_view name, Prop prop, Target target, uint8_t edges)
{
    return {name, prop, ValueKind::Reference, target, edges, nullptr};
}
constexpr PropertyInfo Part(std::string_view name, Prop prop, ValueKind kind, uint8_t edges)
{
    return {name, prop, kind, Target::Number, edges, nullptr};
}

#define P(name) #name, Prop::name
// In the order of Prop.
inline constexpr PropertyInfo kProperties[] = {
    Plain(P(ToolTip), ValueKind::Text),
    Plain(P(Description), ValueKind::Text),
    Plain(P(DisplayName), ValueKind::Text),
    Words(P(Visibility), kVisibilityList),
    Plain(P(DocuURL), ValueKind::Text),
    Words(P(IsDeprecated), kYesNoList),
    Plain(P(EventID), ValueKind::Token),
    Ref(P(pIsImplemented), Target::Number, kInvalidates),
    Ref(P(pIsAvailable), Target::Number, kInvalidates),
    Ref(P(pIsLocked), Target::Number, kInvalidates),
    Ref(P(pBlockPolling), Target::Number, kInvalidates),
    Words(P(ImposedAccessMode), kAccessList),
    Words(P(ImposedVisibility), kVisibilityList),
    Ref(P(pError), Target::Any, kNoEdge),
    Ref(P(pAlias), Target::Any, kNoEdge),
    Ref(P(pCastAlias), Target::Any, kNoEdge),
    Words(P(Streamable), kYesNoList),
    Plain(P(Value), ValueKind::Number),
    Ref(P(pValue), Target::Value, kValueEdge),
    Ref(P(pValueCopy), Target::Value, kEvaluates),
    Ref(P(pIndex), Target::Number, kValueEdge),
    Plain(P(ValueIndexed), ValueKind::Number),
    Ref(P(pValueIndexed), Target::Value, kValueEdge),
    Plain(P(ValueDefault), ValueKind::Number),
    Ref(P(pValueDefault), Target::Value, kValueEdge),
    Plain(P(Min), ValueKind::Number),
    Ref(P(pMin), Target::Number, kInvalidates),
    Plain(P(Max), ValueKind::Number),
    Ref(P(pMax), Target::Number, kInvalidates),
    Plain(P(Inc), ValueKind::Number),
    Ref(P(pInc), Target::Number, kInvalidates),
    Plain(P(ValidValueSet), ValueKind::Token),
    Plain(P(Unit), ValueKind::Text),
    Words(P(Representation), kRepresentationList),
    Words(P(DisplayNotation), kNotationList),
    Plain(P(DisplayPrecision), ValueKind::Integer),
    Plain(P(PollingTime), ValueKind::Integer),
    Ref(P(pSelected), Target::Any, kSelects),
    Plain(P(Address), ValueKind::Integer),
    Part(P(IntSwissKnife), ValueKind::Node, kValueEdge),
    Ref(P(pAddress), Target::Number, kValueEdge),
    Plain(P(Length), ValueKind::Integer),
    Ref(P(pLength), Target::Number, kValueEdge),
    Words(P(AccessMode), kAccessList),
    Ref(P(pPort), Target::Port, kInvalidates),
    Words(P(Cachable), kCachingList),
    Ref(P(pInvalidator), Target::Any, kInvalidates),
    Words(P(Sign), kSignList),
    Words(P(Endianess), kEndianList),
    Plain(P(LSB), ValueKind::Integer),
    Plain(P(MSB), ValueKind::Integer),
    Plain(P(Bit), ValueKind::Integer),
    Part(P(pVariable), ValueKind::Variable, kValueEdge),
    Part(P(Constant), ValueKind::Constant, kValueEdge),
    Part(P(Expression), ValueKind::Expression, kValueEdge),
    Plain(P(Formula), ValueKind::Token),
    Plain(P(FormulaTo), ValueKind::Token),
    Plain(P(FormulaFrom), ValueKind::Token),
    Words(P(Slope), kSlopeList),
    Words(P(IsLinear), kYesNoList),
    Plain(P(OnValue), ValueKind::Integer),
    Plain(P(OffValue), ValueKind::Integer),
    Plain(P(CommandValue), ValueKind::Integer),
    Ref(P(pCommandValue), Target::Number, kValueEdge),
    Part(P(EnumEntry), ValueKind::Node, kInvalidates),
    Plain(P(EntryName), ValueKind::Token), // an attribute in the file, never an element
    Plain(P(NumericValue), ValueKind::Real),
    Plain(P(Symbolic), ValueKind::Token),
    Words(P(IsSelfClearing), kYesNoList),
    Ref(P(pFeature), Target::Any, kValueEdge),
    Plain(P(ChunkID), ValueKind::Token),
    Ref(P(pChunkID), Target::Any, kNoEdge),
    Words(P(SwapEndianess), kYesNoList),
    Words(P(CacheChunkData), kYesNoList),
    Plain(P(FeatureID), ValueKind::Token),
    Plain(P(Timeout), ValueKind::Token),
    Plain(P(Other), ValueKind::Text),
};
#undef P

constexpr bool PropertiesAreInOrder()
{
    for (size_t i = 0; i < kPropCount; ++i)
        if (static_cast<size_t>(kProperties[i].prop) != i)
            return false;
    return true;
}
static_assert(std::size(kProperties) == kPropCount && PropertiesAreInOrder());

} // namespace Tables
} // namespace KxGenApi
