/// The commands of the program. Each adds itself to the parser, with what it does.
#pragma once

#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <vector>

namespace tvw::rgs::cli {

void addTools(CLI::App& program);
void addNew(CLI::App& program);
void addAdd(CLI::App& program);
void addImport(CLI::App& program);
void addLink(CLI::App& program);
void addInfo(CLI::App& program);
void addRecord(CLI::App& program);
void addResimulate(CLI::App& program);
void addSweep(CLI::App& program);
void addVerify(CLI::App& program);
void addExport(CLI::App& program);
void addDemo(CLI::App& program);
void addPlayblast(CLI::App& program);
void addRecover(CLI::App& program);
void addLayout(CLI::App& program);

// Options that several commands share.

inline void addFile(CLI::App& command, std::string& file)
{
    command.add_option("FILE", file, "The scene (.glb)")->required();
}

inline void addOutput(CLI::App& command, std::string& output,
                      const char* text = "The scene to write (.glb)")
{
    command.add_option("-o,--output", output, text)->required();
}

inline void addJson(CLI::App& command, bool& json)
{
    command.add_flag("--json", json, "Write the result as JSON");
}

inline void addSettings(CLI::App& command, std::vector<std::string>& settings, const char* text)
{
    command.add_option("--set", settings, text)->allow_extra_args(false);
}

} // namespace tvw::rgs::cli
