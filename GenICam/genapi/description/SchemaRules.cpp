// SPDX-License-Identifier: Apache-2.0
// Which elements each kind of node may have, how often, and in which order.
#include "description/PropertyTable.h"

#include <initializer_list>

namespace KxGenApi
{
namespace
{

// The notation: elements in their order. A|B|C exclude each other; '?' at most once, '!' exactly once, '*'
// any number, '+' at least one. What stands between braces comes in any order among itself: either the schema
// says so or its versions differ, and refusing a camera's file is worse than taking a disordered one.
constexpr std::string_view kBase =
    "ToolTip? Description? DisplayName? Visibility? {DocuURL? IsDeprecated? EventID?} pIsImplemented? "
    "pIsAvailable? pIsLocked? {pBlockPolling? ImposedAccessMode? ImposedVisibility? pError* pAlias? "
    "pCastAlias? Streamable? pInvalidator*} ";
constexpr std::string_view kNumber =
    "{Value|pValue|pIndex! pValueCopy*} ValueIndexed|pValueIndexed* "
    "ValueDefault|pValueDefault? Min|pMin? Max|pMax? {Inc|pInc? ValidValueSet?} ";
constexpr std::string_view kEither = "{Value|pValue! pValueCopy*} ";
constexpr std::string_view kRegister =
    "Streamable? Address|IntSwissKnife|pAddress|pIndex+ Length|pLength! AccessMode! "
    "pPort! Cachable? PollingTime? pInvalidator* ";
constexpr std::string_view kNames = "{pVariable* Constant* Expression*} ";
constexpr std::string_view kFormulas = "FormulaTo! FormulaFrom! pValue! ";
constexpr std::string_view kBits = "{LSB? MSB? Bit?} ";
constexpr std::string_view kOrder = "{Sign? Endianess!} ";
constexpr std::string_view kShown = "{Unit? Representation?} pSelected* ";
constexpr std::string_view kShownReal =
    "{Unit? Representation? DisplayNotation? DisplayPrecision?} pSelected* ";
constexpr std::string_view kCourse = "{Unit? Representation? Slope? IsLinear?} pSelected* ";
constexpr std::string_view kCourseReal =
    "{Unit? Representation? DisplayNotation? DisplayPrecision? Slope? IsLinear?} pSelected* ";

using Pieces = std::initializer_list<std::string_view>;

/// Turns the notation into a table, when it is compiled.
class RuleReader
{
public:
    explicit constexpr RuleReader(Pieces pieces)
    {
        for (uint8_t& slot : m_rules.slot)
            slot = NodeRules::kNotAllowed;
        for (const std::string_view piece : pieces)
            ReadPiece(piece);
    }
    constexpr const NodeRules& Rules() const { return m_rules; }

private:
    static constexpr bool IsQuantifier(char c) { return c == '?' || c == '!' || c == '*' || c == '+'; }

    constexpr void ReadPiece(std::string_view text)
    {
        size_t begin = 0;
        for (size_t i = 0; i < text.size(); ++i) {
            const char c = text[i];
            if (c != '|' && c != ' ' && c != '{' && c != '}' && !IsQuantifier(c))
                continue;
            if (i > begin)
                AddToSlot(text.substr(begin, i - begin));
            begin = i + 1;
            if (c == '{' || c == '}')
                m_isUnordered = c == '{';
            if (IsQuantifier(c))
                CloseSlot(c);
            if (c == '}' || (IsQuantifier(c) && !m_isUnordered))
                ++m_rank;
        }
    }

    constexpr void AddToSlot(std::string_view name)
    {
        size_t prop = 0;
        while (Tables::kProperties[prop].name != name) // the compiler tells if there is no such element
            ++prop;
        m_rules.slot[prop] = m_slot;
    }

    constexpr void CloseSlot(char quantifier)
    {
        const uint64_t bit = uint64_t{1} << m_slot;
        m_rules.once |= quantifier == '?' || quantifier == '!' ? bit : 0;
        m_rules.required |= quantifier == '+' || quantifier == '!' ? bit : 0;
        m_rules.rank[m_slot++] = m_rank;
    }

    NodeRules m_rules;
    uint8_t m_slot = 0;
    uint8_t m_rank = 0;
    bool m_isUnordered = false;
};

constexpr NodeRules Read(Pieces pieces) { return RuleReader(pieces).Rules(); }

constexpr NodeRules Lenient()
{
    NodeRules rules;
    rules.lenient = true;
    return rules;
}

// In the order of NodeType.
constexpr std::array<NodeRules, kNodeTypeCount> kRules = {
    /* Node           */ Read({kBase}),
    /* Category       */ Read({kBase, "pFeature*"}),
    /* Integer        */ Read({kBase, kNumber, kShown}),
    /* IntReg         */ Read({kBase, kRegister, kOrder, kShown}),
    /* MaskedIntReg   */ Read({kBase, kRegister, kBits, kOrder, kShown}),
    /* StructEntry    */
    Read({kBase, "{AccessMode? Cachable? PollingTime? Streamable? pInvalidator*} ", kBits,
          "{Sign? Endianess?} ", kShown}),
    /* IntConverter   */ Read({kBase, kNames, kFormulas, kCourse}),
    /* IntSwissKnife  */ Read({kBase, kNames, "Formula! ", kShown}),
    /* Float          */ Read({kBase, kNumber, kShownReal}),
    /* FloatReg       */ Read({kBase, kRegister, "Endianess! ", kShownReal}),
    /* Converter      */ Read({kBase, kNames, kFormulas, kCourseReal}),
    /* SwissKnife     */ Read({kBase, kNames, "Formula! ", kShownReal}),
    /* Boolean        */ Read({kBase, kEither, "OnValue? OffValue? pSelected*"}),
    /* Command        */ Read({kBase, kEither, "CommandValue|pCommandValue! PollingTime?"}),
    /* Enumeration    */ Read({kBase, "EnumEntry+ ", kEither, "{pSelected* PollingTime?}"}),
    /* EnumEntry      */ Read({kBase, "Value! {NumericValue? Symbolic? IsSelfClearing?}"}),
    /* String         */ Read({kBase, kEither, "pSelected*"}),
    /* StringReg      */ Read({kBase, kRegister, "pSelected*"}),
    /* Register       */ Read({kBase, kRegister, "pSelected*"}),
    /* Port           */ Read({kBase, "{ChunkID|pChunkID? SwapEndianess? CacheChunkData?}"}),
    /* ConfRom        */ Lenient(),
    /* TextDesc       */ Lenient(),
    /* IntKey         */ Lenient(),
    /* AdvFeatureLock */ Lenient(),
    /* SmartFeature   */ Lenient(),
};

// What is missing here may stand in each entry; the complete entry is checked.
constexpr NodeRules kStructRegRules = Read(
    {kBase, "Streamable? Address|IntSwissKnife|pAddress|pIndex* Length|pLength? AccessMode? pPort? Cachable? "
            "PollingTime? pInvalidator* {Sign? Endianess?} {Unit? Representation? pSelected*}"});

} // namespace

const NodeRules& RulesOf(NodeType type) { return kRules[static_cast<size_t>(type)]; }

const NodeRules& StructRegRules() { return kStructRegRules; }

} // namespace KxGenApi
