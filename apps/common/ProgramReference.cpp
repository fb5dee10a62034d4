// SPDX-License-Identifier: Apache-2.0
#include "ProgramReference.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <iostream>
#include <ostream>
#include <stdexcept>
#include <vector>

namespace KxApps
{

namespace
{

std::vector<const CLI::App*> CommandsOf(const CLI::App& program)
{
    // Groups of options are nameless subcommands.
    return program.get_subcommands([](const CLI::App* command) { return !command->get_name().empty(); });
}

std::vector<const CLI::Option*> OptionsOf(const CLI::App& command)
{
    std::vector<const CLI::Option*> options =
        command.get_options([](const CLI::Option* option) { return !option->get_group().empty(); });
    for (const CLI::App* const group :
         command.get_subcommands([](const CLI::App* inner) { return inner->get_name().empty(); }))
        for (const CLI::Option* const option : group->get_options())
            if (!option->check_name("--help")) // the command has its own
                options.push_back(option);
    return options;
}

// The entries of a type name such as "ENUM:{a,b}"; none without them.
std::vector<std::string> ChoicesOf(const CLI::Option& option)
{
    const std::string type = option.get_type_name();
    const size_t from = type.find('{'), to = type.find('}');
    std::vector<std::string> choices;
    if (from == std::string::npos || to == std::string::npos)
        return choices;
    std::istringstream names(type.substr(from + 1, to - from - 1));
    for (std::string name; std::getline(names, name, ',');)
        choices.push_back(name.substr(0, name.find("->")));
    return choices;
}

std::string ArgumentOf(const CLI::Option& option)
{
    if (option.get_type_size() == 0)
        return {};
    const std::vector<std::string> choices = ChoicesOf(option);
    std::string text;
    for (const std::string& choice : choices)
        text += (text.empty() ? "" : "|") + choice;
    if (!choices.empty())
        return text;
    text = option.get_type_name();
    return text.substr(0, text.find_first_of(":[ "));
}

// "-o, --output TEXT", or the name of a positional argument.
std::string HeadOf(const CLI::Option& option)
{
    if (option.get_positional())
        return option.get_name(true);
    std::string head;
    for (const std::string& name : option.get_snames())
        head += (head.empty() ? "-" : ", -") + name;
    for (const std::string& name : option.get_lnames())
        head += (head.empty() ? "--" : ", --") + name;
    const std::string argument = ArgumentOf(option);
    return argument.empty() ? head : head + " " + argument;
}

std::string AboutOf(const CLI::Option& option)
{
    const std::string first = option.get_default_str();
    return option.get_description() + (first.empty() ? "" : " (first: " + first + ")");
}

std::string UsageOf(const CLI::App& program, const CLI::App& command)
{
    std::string usage = program.get_name();
    if (&command != &program)
        usage += " " + command.get_name();
    std::string arguments;
    bool hasOptions = false;
    for (const CLI::Option* const option : OptionsOf(command)) {
        if (!option->get_positional()) {
            hasOptions = true;
            continue;
        }
        const std::string name = option->get_name(true) + (option->get_expected_max() > 1 ? "..." : "");
        arguments += option->get_required() ? " " + name : " [" + name + "]";
    }
    return usage + (hasOptions ? " [OPTIONS]" : "") + arguments;
}

// ---- troff

std::string Troff(const std::string& text)
{
    std::string out;
    for (const char c : text) {
        if (c == '\\')
            out += "\\e";
        else if (c == '-')
            out += "\\-";
        else if ((c == '.' || c == '\'') && (out.empty() || out.back() == '\n'))
            out += std::string("\\&") + c;
        else
            out += c;
    }
    return out;
}

void WriteManOptions(std::ostream& out, const CLI::App& command)
{
    for (const CLI::Option* const option : OptionsOf(command))
        out << ".TP\n.B " << Troff(HeadOf(*option)) << "\n" << Troff(AboutOf(*option)) << "\n";
}

void WriteMan(std::ostream& out, const CLI::App& program)
{
    const std::vector<const CLI::App*> commands = CommandsOf(program);
    std::string upper = program.get_name();
    std::transform(upper.begin(), upper.end(), upper.begin(),
                   [](unsigned char c) { return std::toupper(c); });
    out << ".TH " << upper << " 1 \"\" \"KxApi\" \"User commands\"\n.SH NAME\n"
        << Troff(program.get_name()) << " \\- " << Troff(program.get_description()) << "\n.SH SYNOPSIS\n";
    if (commands.empty())
        out << ".B " << Troff(UsageOf(program, program)) << "\n";
    else
        out << ".B " << Troff(program.get_name()) << "\n.I COMMAND\n[OPTIONS] ...\n";
    out << ".SH OPTIONS\n";
    WriteManOptions(out, program);
    if (!commands.empty())
        out << ".SH COMMANDS\n";
    for (const CLI::App* const command : commands) {
        out << ".SS " << Troff(UsageOf(program, *command)) << "\n"
            << Troff(command->get_description()) << "\n";
        WriteManOptions(out, *command);
    }
    out << ".SH EXIT STATUS\n" << Troff(program.get_footer()) << "\n";
}

// ---- Markdown

std::string Cell(std::string text)
{
    for (size_t at = 0; (at = text.find('|', at)) != std::string::npos; at += 2)
        text.insert(at, "\\");
    return text;
}

void WriteTable(std::ostream& out, const CLI::App& command)
{
    out << "| Option | |\n|---|---|\n";
    for (const CLI::Option* const option : OptionsOf(command))
        out << "| `" << Cell(HeadOf(*option)) << "` | " << Cell(AboutOf(*option)) << " |\n";
}

void WriteMarkdown(std::ostream& out, const CLI::App& program)
{
    out << "# " << program.get_name() << "\n\n"
        << program.get_description() << ". " << program.get_footer()
        << ".\n\nThis page is made from the program's own table of options: `" << program.get_name()
        << " --reference markdown`.\n\n";
    WriteTable(out, program);
    for (const CLI::App* const command : CommandsOf(program)) {
        out << "\n## " << program.get_name() << " " << command->get_name() << "\n\n    "
            << UsageOf(program, *command) << "\n\n"
            << command->get_description() << ".\n\n";
        WriteTable(out, *command);
    }
}

// ---- Bash

std::string WordsOf(const CLI::App& command)
{
    std::string words;
    for (const CLI::Option* const option : OptionsOf(command)) {
        for (const std::string& name : option->get_snames())
            words += (words.empty() ? "-" : " -") + name;
        for (const std::string& name : option->get_lnames())
            words += (words.empty() ? "--" : " --") + name;
    }
    return words;
}

// A branch for each option with a fixed set of values.
void WriteValueCases(std::ostream& out, const CLI::App& command, const std::string& scope)
{
    for (const CLI::Option* const option : OptionsOf(command)) {
        std::string words;
        for (const std::string& choice : ChoicesOf(*option))
            words += (words.empty() ? "" : " ") + choice;
        if (words.empty() || option->get_lnames().empty())
            continue;
        out << "        " << scope << ":--" << option->get_lnames().front() << ") COMPREPLY=($(compgen -W '"
            << words << "' -- \"$cur\")); return ;;\n";
    }
}

void WriteBash(std::ostream& out, const CLI::App& program)
{
    const std::string& name = program.get_name();
    const std::vector<const CLI::App*> commands = CommandsOf(program);
    std::string names, withCamera;
    for (const CLI::App* const command : commands) {
        names += command->get_name() + " ";
        if (command->get_option_no_throw("CAMERA"))
            withCamera += (withCamera.empty() ? "" : "|") + command->get_name();
    }
    out << "# Completion of " << name << " for bash.\n_" << name << "()\n{\n"
        << "    local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD-1]} command=''\n"
        << (commands.empty() ? "" : "    ((COMP_CWORD > 1)) && command=${COMP_WORDS[1]}\n")
        << "    COMPREPLY=()\n    case $command:$prev in\n";
    WriteValueCases(out, program, "''");
    for (const CLI::App* const command : commands)
        WriteValueCases(out, *command, command->get_name());
    out << "        *) ;;\n    esac\n    local words=''\n    case $command in\n        '') words='" << names
        << WordsOf(program) << "' ;;\n";
    for (const CLI::App* const command : commands)
        out << "        " << command->get_name() << ") words='" << WordsOf(*command) << "' ;;\n";
    out << "        *) ;;\n    esac\n";
    if (!withCamera.empty()) // lines of cameras begin with four blanks and the ID
        out << "    if [[ $cur != -* && $COMP_CWORD == 2 && $command == @(" << withCamera << ") ]]; then\n"
            << "        words=$(\"${COMP_WORDS[0]}\" list 2>/dev/null | sed -n 's/^    \\([^ ][^ ]*\\)  "
               ".*/\\1/p')\n"
            << "    fi\n";
    out << "    COMPREPLY=($(compgen -W \"$words\" -- \"$cur\"))\n}\n"
        << "complete -o default -F _" << name << " " << name << "\n";
}

struct Form
{
    const char* name;
    void (*write)(std::ostream&, const CLI::App&);
};

constexpr Form kForms[] = {{"man", WriteMan}, {"bash", WriteBash}, {"markdown", WriteMarkdown}};

} // namespace

void WriteReference(std::ostream& out, const CLI::App& program, const std::string& form)
{
    const auto found = std::find_if(std::begin(kForms), std::end(kForms),
                                    [&form](const Form& candidate) { return form == candidate.name; });
    if (found == std::end(kForms))
        throw std::invalid_argument("--reference " + form + " is none of man, bash, markdown");
    found->write(out, program);
}

bool AnswerReference(int argc, char** argv, const CLI::App& program)
{
    if (argc != 3 || argv[1] != std::string("--reference"))
        return false;
    WriteReference(std::cout, program, argv[2]);
    return static_cast<bool>(std::cout.flush());
}

} // namespace KxApps
