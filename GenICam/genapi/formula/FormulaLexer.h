// SPDX-License-Identifier: Apache-2.0
// Cuts the text of a formula into tokens.
#pragma once

#include "formula/FormulaDialect.h"
#include "formula/FormulaLiteral.h"
#include "formula/FormulaOperators.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace KxGenApi
{

enum class TokenKind : std::uint8_t
{
    End,
    Number,
    Name,
    Operator, ///< one with two operands; + and - can also be prefixes
    Complement,
    Open,
    Close,
    Comma,
    Question,
    Colon
};

struct Token
{
    TokenKind kind = TokenKind::End;
    std::string_view text;
    std::size_t offset = 0;
    Literal literal;                                ///< of a number
    const BinaryOperator* binaryOperator = nullptr; ///< of an operator
};

class FormulaLexer
{
public:
    /// The text has to outlive the lexer and its tokens.
    FormulaLexer(std::string_view text, const FormulaDialect& dialect);

    /// After the last token End comes for ever.
    /// @throws FormulaError for what begins no token
    Token Next();

    /// Whether the next token is an opening bracket.
    bool AtOpen();

private:
    void SkipBlanks();
    Token NumberToken();

    std::string_view m_text;
    std::size_t m_position = 0;
    const FormulaDialect& m_dialect;
};

} // namespace KxGenApi
