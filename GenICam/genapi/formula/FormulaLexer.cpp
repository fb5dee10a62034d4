// SPDX-License-Identifier: Apache-2.0
#include "formula/FormulaLexer.h"

#include "formula/FormulaError.h"

#include <algorithm>
#include <string>

namespace KxGenApi
{

namespace
{

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

/// Dots belong to names: a variable can be called "Gain.Max" after the property that it reads.
bool BelongsToName(char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || IsDigit(c) || c == '_' || c == '.';
}

std::size_t NameLength(std::string_view text)
{
    const auto end = std::find_if_not(text.begin(), text.end(), BelongsToName);
    return static_cast<std::size_t>(end - text.begin());
}

TokenKind PunctuationKind(char c)
{
    switch (c) {
    case '~':
        return TokenKind::Complement;
    case '(':
        return TokenKind::Open;
    case ')':
        return TokenKind::Close;
    case ',':
        return TokenKind::Comma;
    case '?':
        return TokenKind::Question;
    case ':':
        return TokenKind::Colon;
    default:
        return TokenKind::End;
    }
}

} // namespace

FormulaLexer::FormulaLexer(std::string_view text, const FormulaDialect& dialect)
    : m_text(text)
    , m_dialect(dialect)
{}

void FormulaLexer::SkipBlanks()
{
    m_position = std::min(m_text.find_first_not_of(" \t\r\n", m_position), m_text.size());
}

bool FormulaLexer::AtOpen()
{
    SkipBlanks();
    return m_position < m_text.size() && m_text[m_position] == '(';
}

Token FormulaLexer::Next()
{
    SkipBlanks();
    Token token;
    token.offset = m_position;
    const std::string_view rest = m_text.substr(m_position);
    if (rest.empty())
        return token;
    if (IsDigit(rest.front()))
        return NumberToken();

    std::size_t length = 1;
    if (BelongsToName(rest.front()) && rest.front() != '.') {
        token.kind = TokenKind::Name;
        length = NameLength(rest);
    } else if (const auto* found = FindBinaryOperator(rest, m_dialect.doubledEquality)) {
        token.kind = TokenKind::Operator;
        token.binaryOperator = found;
        length = found->symbol.size();
    } else {
        token.kind = PunctuationKind(rest.front());
        if (token.kind == TokenKind::End)
            throw FormulaError("unexpected " + QuotedForMessage(rest.substr(0, 1)), m_position);
    }
    token.text = rest.substr(0, length);
    m_position += length;
    return token;
}

Token FormulaLexer::NumberToken()
{
    const std::string_view rest = m_text.substr(m_position);
    Token token;
    token.kind = TokenKind::Number;
    token.offset = m_position;
    token.literal = ScanLiteral(rest);
    token.text = token.literal.text;
    if (const std::size_t whole = NameLength(rest); whole > token.text.size())
        throw FormulaError(QuotedForMessage(rest.substr(0, whole)) + " is neither a number nor a name",
                           m_position);
    m_position += token.text.size();
    return token;
}

} // namespace KxGenApi
