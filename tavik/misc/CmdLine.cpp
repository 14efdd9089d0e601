#include <tavik/misc/CmdLine.h>

#include <cstdio>

namespace Tavik::Misc {

CmdLine& CmdLine::instance()
{
    static CmdLine commandLine;
    return commandLine;
}

void CmdLine::addSwitch(const std::string& name, const std::string& description)
{
    mOptions[name] = {Option::Switch, false, description, "false"};
}

void CmdLine::addParameter(const std::string& name, const std::string& description, const std::string& defaultValue)
{
    mOptions[name] = {Option::Parameter, false, description, defaultValue};
}

bool CmdLine::parse(int argc, char** argv)
{
    int count = 0;
    while (argv != nullptr && count < argc && argv[count] != nullptr) {
        ++count;
    }
    if (count == 0) {
        return true;
    }
    mProgramName = argv[0];
    bool recognised = true;
    for (int i = 1; i < count; ++i) {
        const auto found = mOptions.find(argv[i]);
        if (found == mOptions.end()) {
            std::printf("unknown option %s\n", argv[i]);
            recognised = false;
            continue;
        }
        Option& option = found->second;
        option.set = true;
        if (option.type == Option::Switch) {
            option.value = option.value == "true" ? "false" : "true";
        } else if (i + 1 < count) {
            option.value = argv[++i];
        }
    }
    return recognised;
}

bool CmdLine::getSwitch(const std::string& name) const
{
    const auto found = mOptions.find(name);
    return found != mOptions.end() && found->second.set;
}

bool CmdLine::getParameter(const std::string& name, std::string& value) const
{
    const auto found = mOptions.find(name);
    if (found == mOptions.end()) {
        return false;
    }
    value = found->second.value;
    return found->second.set;
}

void CmdLine::printUsage() const
{
    std::printf("Usage of %s :\n", mProgramName.c_str());
    for (const auto& [name, option] : mOptions) {
        if (option.type == Option::Switch) {
            std::printf("%-8s %s\n", name.c_str(), option.description.c_str());
        } else {
            std::printf("%-8s [%s] default [%s]\n", name.c_str(), option.description.c_str(), option.value.c_str());
        }
    }
}

} // namespace Tavik::Misc
