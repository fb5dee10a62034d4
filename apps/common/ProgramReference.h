// SPDX-License-Identifier: Apache-2.0
// Man page, completion and documentation of a program, made from the table of its options.
#pragma once

#include <iosfwd>
#include <string>

namespace CLI
{
class App;
}

namespace KxApps
{

/// Writes the reference in a form: "man" (troff), "bash" (completion) or "markdown". Raises
/// std::invalid_argument for another.
void WriteReference(std::ostream& out, const CLI::App& program, const std::string& form);

/// Whether the program was called as "PROGRAM --reference FORM", as the build does; then writes it to
/// standard output.
bool AnswerReference(int argc, char** argv, const CLI::App& program);

} // namespace KxApps
