// SPDX-License-Identifier: Apache-2.0
// A second witness for formulas: reads a text by recursive descent and computes as it goes, with nothing in
// common with the compiler but the grammar.
#pragma once

#include "formula/Formula.h"

#include <cctype>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>
#include <type_traits>

namespace KxGenApi
{

/// What became of a formula.
template <typename Number>
struct Outcome
{
    enum class Kind
    {
        Value,
        BadText,    ///< doesn't compile
        BadValues,  ///< compiles and cannot be evaluated
        BeyondLimit ///< more depth or work than this simple reader should take on
    };

    Kind kind;
    Number value;
};

template <typename Number>
class DirectEvaluator
{
public:
    DirectEvaluator(const FormulaNames& names, const Number* values, const FormulaDialect& dialect)
        : m_names(names)
        , m_values(values)
        , m_dialect(dialect)
    {}

    Outcome<Number> Evaluate(std::string_view text)
    {
        using Kind = typename Outcome<Number>::Kind;
        try {
            const Number value = Text(text);
            return {m_faulted ? Kind::BadValues : Kind::Value, value};
        } catch (const Stop& stop) {
            return {stop.beyondLimit ? Kind::BeyondLimit : Kind::BadText, Number()};
        }
    }

private:
    static constexpr bool kIntegers = std::is_same_v<Number, std::int64_t>;
    static constexpr int kDeepest = 400;

    struct Stop
    {
        bool beyondLimit;
    };

    struct Reader
    {
        std::string text;
        std::size_t at = 0;

        char Peek()
        {
            while (at < text.size() && std::strchr(" \t\r\n", text[at]) && text[at] != '\0')
                ++at;
            return at < text.size() ? text[at] : '\0';
        }
        bool Ended() { return Peek(), at == text.size(); }
        bool Take(const char* symbol)
        {
            Peek();
            const std::size_t length = std::strlen(symbol);
            if (text.compare(at, length, symbol) != 0)
                return false;
            at += length;
            return true;
        }
    };

    [[noreturn]] static void Bad() { throw Stop{false}; }

    Number Text(std::string_view text)
    {
        Reader reader{std::string(text)};
        const Number value = Condition(reader);
        if (!reader.Ended())
            Bad();
        return value;
    }

    Number Condition(Reader& r)
    {
        // Each mention of an expression is computed anew, which can double the work at every level.
        if (++m_depth > kDeepest || ++m_conditions > 20'000)
            throw Stop{true};
        Number value = Level(r, 4);
        while (r.Take("?")) {
            const Number whenTrue = Level(r, 4);
            if (!r.Take(":"))
                Bad();
            const Number whenFalse = Level(r, 4);
            value = value != Number() ? whenTrue : whenFalse;
        }
        --m_depth;
        return value;
    }

    /// The operator of that level that comes next, empty when none does.
    std::string TakeOperator(Reader& r, int level) const
    {
        static const char* const kLevels[5][9] = {
            {},
            {"**", "<<", ">>", "&", "|", "^"},
            {"*", "/", "%"},
            {"+", "-"},
            {"<>", "<=", ">=", "&&", "||", "=", "<", ">"},
        };
        const std::size_t before = r.at;
        if (level == 4 && m_dialect.doubledEquality)
            for (const char* symbol : {"==", "!="})
                if (r.Take(symbol))
                    return symbol;
        for (const char* symbol : kLevels[level]) {
            if (!symbol || !r.Take(symbol))
                continue;
            const char next = r.at < r.text.size() ? r.text[r.at] : '\0';
            // The beginning of a longer operator of another level.
            const bool longer =
                std::strlen(symbol) == 1 &&
                ((*symbol == next && std::strchr("*&|<>", next)) || (*symbol == '<' && next == '>'));
            if (!longer)
                return symbol;
            r.at = before;
        }
        return {};
    }

    Number Level(Reader& r, int level)
    {
        if (level == 0)
            return Prefixed(r);
        Number value = Level(r, level - 1);
        for (std::string symbol = TakeOperator(r, level); !symbol.empty(); symbol = TakeOperator(r, level)) {
            if (level == 3 && (r.Peek() == '+' || r.Peek() == '-'))
                Bad();
            value = Apply(symbol, value, Level(r, level - 1));
        }
        return value;
    }

    Number Prefixed(Reader& r)
    {
        if (++m_depth > kDeepest)
            throw Stop{true};
        const char sign = r.Peek();
        Number value;
        if (sign == '+' || sign == '-' || sign == '~') {
            ++r.at;
            if (sign != '~' && (r.Peek() == '+' || r.Peek() == '-'))
                Bad();
            const Number operand = Prefixed(r);
            value = sign == '+' ? operand : sign == '-' ? Negated(operand) : Complement(operand);
        } else if (r.Take("(")) {
            value = Condition(r);
            if (!r.Take(")"))
                Bad();
        } else {
            value = Atom(r);
        }
        --m_depth;
        return value;
    }

    static bool IsWord(char c)
    {
        return c && std::strchr("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_.", c);
    }
    static bool IsDigit(char c) { return c >= '0' && c <= '9'; }

    Number Atom(Reader& r)
    {
        const char first = r.Peek();
        if (IsDigit(first))
            return Literal(r);
        if (!IsWord(first) || first == '.')
            Bad();
        std::string name;
        while (r.at < r.text.size() && IsWord(r.text[r.at]))
            name += r.text[r.at++];
        return r.Peek() == '(' ? Call(r, name) : Named(name);
    }

    Number Literal(Reader& r)
    {
        const char* const begin = r.text.c_str() + r.at;
        const bool hex =
            begin[0] == '0' && begin[1] == 'x' && std::isxdigit(static_cast<unsigned char>(begin[2]));
        if (!hex && begin[0] == '0' && (begin[1] == 'x' || begin[1] == 'X'))
            Bad();
        std::size_t length = hex ? 2 : 0;
        bool decimal = false;
        if (hex) {
            while (std::isxdigit(static_cast<unsigned char>(begin[length])))
                ++length;
        } else {
            char* end = nullptr;
            std::strtod(begin, &end);
            length = static_cast<std::size_t>(end - begin);
            decimal = std::string(begin, length).find_first_of(".eE") != std::string::npos;
        }
        r.at += length;
        if (r.at < r.text.size() && IsWord(r.text[r.at]))
            Bad();
        return NumberOf(std::string(begin, length), hex, decimal);
    }

    Number NumberOf(const std::string& text, bool hex, bool decimal) const
    {
        if (!kIntegers && !hex)
            return static_cast<Number>(std::strtod(text.c_str(), nullptr));
        if (decimal) {
            const long double value = std::strtod(text.c_str(), nullptr);
            const bool integral = std::floor(value) == value;
            if (!m_dialect.integralDecimals || !integral)
                Bad();
            const long double rounded = std::floor(value + 0.5L);
            return rounded > 9223372036854775807.0L ? std::numeric_limits<Number>::max()
                                                    : static_cast<Number>(rounded);
        }
        const std::int64_t wide = std::strtoll(text.c_str(), nullptr, hex ? 16 : 10); // saturates by itself
        if constexpr (kIntegers)
            return wide;
        return static_cast<Number>(static_cast<std::int32_t>(static_cast<std::uint32_t>(wide)));
    }

    Number Named(const std::string& name)
    {
        for (std::size_t i = 0; i < m_names.variables.size(); ++i)
            if (m_names.variables[i] == name)
                return m_values[i];
        for (const auto& [constant, text] : m_names.constants)
            if (constant == name)
                return Constant(text);
        for (const auto& [expression, text] : m_names.expressions)
            if (expression == name)
                return ExpressionValue(text);
        return NamedConstant(name);
    }

    Number ExpressionValue(std::string_view text)
    {
        // A cycle ends here as well; then the depth says nothing about the text, as with any nesting.
        if (++m_depth > kDeepest)
            throw Stop{true};
        const Number value = Text(text);
        --m_depth;
        return value;
    }

    /// Constants are read by the same code as the compiler's: what they may contain is no question of
    /// grammar.
    Number Constant(std::string_view text)
    {
        FormulaNames names;
        names.constants = {{"C", text}};
        try {
            return Formula<Number>::Compile("C", names).Evaluate(nullptr);
        } catch (const FormulaError&) {
            Bad();
        }
    }

    static std::string UpperCase(std::string name)
    {
        for (char& c : name)
            c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
        return name;
    }

    static Number NamedConstant(const std::string& name)
    {
        const std::string upper = UpperCase(name);
        if (!kIntegers && upper == "E")
            return static_cast<Number>(2.718281828459045);
        if (!kIntegers && upper == "PI")
            return static_cast<Number>(3.141592653589793);
        Bad();
    }

    Number Call(Reader& r, const std::string& name)
    {
        const std::string upper = UpperCase(name);
        r.Take("(");
        if (!kIntegers && (upper == "E" || upper == "PI")) {
            if (!r.Take(")"))
                Bad();
            return NamedConstant(name);
        }
        const Number a = Condition(r);
        if (upper == "ROUND" && r.Take(",")) {
            const Number digits = Condition(r);
            if (!r.Take(")"))
                Bad();
            return RoundedTo(a, digits);
        }
        if (!r.Take(")"))
            Bad();
        if (upper == "SGN")
            return a > 0 ? Number(1) : a < 0 ? Number(-1) : Number(0);
        if (upper == "NEG")
            return Negated(a);
        if constexpr (!kIntegers)
            return Function(upper, a);
        Bad();
    }

    static double Function(const std::string& name, double a)
    {
        using Unary = double (*)(double);
        const std::pair<const char*, Unary> functions[] = {
            {"ABS", std::fabs},    {"SQRT", std::sqrt}, {"SIN", std::sin},     {"COS", std::cos},
            {"TAN", std::tan},     {"ASIN", std::asin}, {"ACOS", std::acos},   {"ATAN", std::atan},
            {"EXP", std::exp},     {"LN", std::log},    {"LG", std::log10},    {"TRUNC", std::trunc},
            {"FLOOR", std::floor}, {"CEIL", std::ceil}, {"ROUND", std::round},
        };
        for (const auto& [known, function] : functions)
            if (name == known)
                return function(a);
        Bad();
    }

    static Number RoundedTo(Number value, Number digits)
    {
        if constexpr (kIntegers)
            Bad();
        const double scale = std::pow(10.0, std::fabs(std::trunc(static_cast<double>(digits))));
        const double v = static_cast<double>(value);
        if (digits < 0)
            return static_cast<Number>(std::isinf(scale) ? 0.0 : std::round(v / scale) * scale);
        return static_cast<Number>(std::isfinite(v * scale) ? std::round(v * scale) / scale : v);
    }

    __extension__ using Wide = __int128;

    /// Keeps the low 64 bits.
    static std::int64_t Narrow(Wide value)
    {
        return static_cast<std::int64_t>(static_cast<std::uint64_t>(value));
    }

    Number Fault()
    {
        m_faulted = true;
        return Number();
    }

    static Number Negated(Number a)
    {
        if constexpr (kIntegers)
            return Narrow(-static_cast<Wide>(a));
        else
            return -a;
    }

    Number Complement(Number a)
    {
        if constexpr (kIntegers)
            return Narrow(-static_cast<Wide>(a) - 1);
        else
            return InRange(a) ? -1.0 - std::trunc(a) : Fault();
    }

    static bool InRange(double a) { return std::trunc(a) >= -2147483648.0 && std::trunc(a) <= 2147483647.0; }

    /// Bit operators in 64 bits, of which the kind of formula keeps 32 or all.
    Number Bits(const std::string& symbol, Number a, Number b)
    {
        if constexpr (!kIntegers)
            if (!InRange(a) || !InRange(b))
                return Fault();
        const auto x = static_cast<std::int64_t>(a);
        const auto y = static_cast<std::int64_t>(b);
        const std::int64_t count = y & (kIntegers ? 63 : 31);
        std::int64_t result = 0;
        if (symbol == "&")
            result = x & y;
        else if (symbol == "|")
            result = x | y;
        else if (symbol == "^")
            result = x ^ y;
        else if (symbol == "<<")
            result = static_cast<std::int64_t>(static_cast<std::uint64_t>(x) << count);
        else
            result = x >> count;
        return kIntegers ? static_cast<Number>(result)
                         : static_cast<Number>(static_cast<std::int32_t>(result));
    }

    static Number Power(Number a, Number b)
    {
        const double power = std::pow(static_cast<double>(a), static_cast<double>(b));
        if constexpr (kIntegers)
            return power > -9223372036854775809.0L && power < 9223372036854775808.0L
                       ? static_cast<Number>(power)
                       : std::numeric_limits<Number>::min();
        else
            return power;
    }

    Number Quotient(char symbol, Number a, Number b)
    {
        if (b == Number())
            return Fault();
        if constexpr (kIntegers)
            return Narrow(symbol == '/' ? static_cast<Wide>(a) / b : static_cast<Wide>(a) % b);
        else
            return symbol == '/' ? a / b : std::fmod(a, b);
    }

    static Number SumOrProduct(char symbol, Number a, Number b)
    {
        if constexpr (kIntegers) {
            const Wide x = a;
            return Narrow(symbol == '+' ? x + b : symbol == '-' ? x - b : x * b);
        } else {
            return symbol == '+' ? a + b : symbol == '-' ? a - b : a * b;
        }
    }

    Number Apply(const std::string& symbol, Number a, Number b)
    {
        const char first = symbol.front();
        if (symbol == "**")
            return Power(a, b);
        if (symbol == "<<" || symbol == ">>" || symbol == "&" || symbol == "|" || symbol == "^")
            return Bits(symbol, a, b);
        if (first == '/' || first == '%')
            return Quotient(first, a, b);
        if (first == '*' || first == '+' || first == '-')
            return SumOrProduct(first, a, b);
        const bool result = symbol == "=" || symbol == "=="    ? a == b
                            : symbol == "<>" || symbol == "!=" ? a != b
                            : symbol == "<"                    ? a < b
                            : symbol == ">"                    ? a > b
                            : symbol == "<="                   ? a <= b
                            : symbol == ">="                   ? a >= b
                            : symbol == "&&"                   ? a != 0 && b != 0
                                                               : a != 0 || b != 0;
        return result ? Number(1) : Number(0);
    }

    const FormulaNames& m_names;
    const Number* m_values;
    const FormulaDialect& m_dialect;
    int m_depth = 0;
    int m_conditions = 0;
    bool m_faulted = false;
};

} // namespace KxGenApi
