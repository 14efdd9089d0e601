#pragma once

#include <tavik/Export.h>

#include <map>
#include <string>

namespace Tavik::Misc {

/// The options of a program's command line.
///
///     CmdLine& options = CmdLine::instance();
///     options.addSwitch("--fullscreen", "use the whole screen");
///     options.addParameter("--terrain", "folder of terrain tiles", "/data/terrain");
///     if (!options.parse(argc, argv)) {
///         options.printUsage();
///         return EXIT_FAILURE;
///     }
///     std::string folder;
///     options.getParameter("--terrain", folder);
///
/// First add the options, then parse, then ask. A name is the exact text expected on the command line, dashes
/// included; letter case counts, and there are no abbreviations, no "name=value" and no groups of letters.
/// One thread at a time.
class TAVIK_API CmdLine
{
public:
    /// The one command line of the process, created by the first call.
    static CmdLine& instance();

    CmdLine(const CmdLine&) = delete;
    CmdLine& operator=(const CmdLine&) = delete;

    /// Adds an option without an argument, in place of any other of that name.
    /// @param name         as it is written on the command line
    /// @param description  for printUsage
    void addSwitch(const std::string& name, const std::string& description);

    /// Adds an option that takes the next argument as its value, in place of any other of that name.
    void addParameter(const std::string& name, const std::string& description, const std::string& defaultValue);

    /// Takes the program's name and its options from the arguments of main; a null pointer ends them.
    ///
    /// Prints "unknown option " and the argument to standard output for each one that is not an option, and goes on
    /// with the next. A parameter without an argument, being the last, counts as set and keeps its value.
    /// @return whether every argument was recognised
    bool parse(int argc, char** argv);

    /// Whether the option occurred on the command line, however often; false for an unknown name.
    bool getSwitch(const std::string& name) const;

    /// The value of a parameter.
    /// @param name   of the parameter
    /// @param value  receives the argument, or the default where there was none; unchanged for an unknown name. A
    ///               switch has the value "true" after occurring an odd number of times, else "false".
    /// @return whether the option occurred on the command line; false for an unknown name
    bool getParameter(const std::string& name, std::string& value) const;

    /// Prints "Usage of <program> :" and a line for each option, in the order of their names, to standard output:
    /// "<name> <description>" for a switch, "<name> [<description>] default [<value>]" for a parameter, the name padded
    /// to 8 characters.
    void printUsage() const;

private:
    struct Option
    {
        enum Type : int
        {
            Switch = 0,
            Parameter = 1
        };

        Type type;
        bool set;
        std::string description;
        std::string value;
    };

    CmdLine() = default;

    std::string mProgramName;
    std::map<std::string, Option> mOptions;
};

} // namespace Tavik::Misc
