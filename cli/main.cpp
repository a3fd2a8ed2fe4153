#include "cli/commands.h"
#include "cli/terminal.h"
#include "core/version.h"

#include <cstdio>
#include <exception>

namespace tvw::rgs::cli {

namespace {

void addCommands(CLI::App& program)
{
    program.set_version_flag("--version", std::string("rigstage ") + kVersion);
    program.require_subcommand(1);
    for (auto* const add :
         {addNew, addAdd, addImport, addLink, addInfo, addRecord, addResimulate, addSweep,
          addVerify, addExport, addPlayblast, addDemo, addRecover, addTools, addLayout})
        add(program);
}

int fail(const std::string& what, int status)
{
    std::fprintf(stderr, "rigstage: %s\n", what.c_str());
    return status;
}

int usage(const CLI::App& program, const std::string& what)
{
    std::string help = "rigstage";
    for (const CLI::App* const command : program.get_subcommands())
        help += " " + command->get_name();
    return fail(what + " (see \"" + help + " --help\")", kUsage);
}

/// CLI11 names what it did not expect in the wrong order, and an unknown command not at all.
std::string reasonOf(const CLI::App& program, const CLI::ParseError& error)
{
    const bool isCommand = program.get_subcommands().empty();
    const CLI::App& asked = isCommand ? program : *program.get_subcommands().front();
    const std::vector<std::string> unknown = asked.remaining();
    if (isCommand && !unknown.empty())
        return "there is no command \"" + unknown.front() + "\"";
    if (!unknown.empty())
        return "\"" + unknown.front() + "\" is not expected here";
    return error.what();
}

int run(int argc, char** argv)
{
    CLI::App program("Rigstage: perform animation live, keep the take, resimulate it.", "rigstage");
    addCommands(program);
    try {
        program.parse(argc, argv);
        return 0;
    } catch (const CLI::ParseError& error) {
        return error.get_exit_code() == 0 ? program.exit(error)
                                          : usage(program, reasonOf(program, error));
    } catch (const Failure& failure) {
        return failure.status() == kUsage ? usage(program, failure.what())
                                          : fail(failure.what(), failure.status());
    } catch (const std::bad_alloc&) {
        return fail("the memory does not suffice", 1);
    } catch (const std::exception& error) {
        return fail(error.what(), 1);
    }
}

} // namespace

} // namespace tvw::rgs::cli

int main(int argc, char** argv)
{
    return tvw::rgs::cli::run(argc, argv);
}
