// help.h - the tool's help texts, manual page and completion script.
#ifndef ZELSTR_TOOL_HELP_H
#define ZELSTR_TOOL_HELP_H

#include <cstdio>

#include "tool/command.h"

namespace zelstr::tool {

void print_overview(std::FILE* out);
void print_command_help(std::FILE* out, Command const& command);
void print_man_page(std::FILE* out);
void print_bash_completion(std::FILE* out);

}  // namespace zelstr::tool

#endif  // ZELSTR_TOOL_HELP_H
