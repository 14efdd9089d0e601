#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace Tavik::Fuzz {

/// A file in memory with the input of a fuzz target, for code that takes the name of a file.
///
///     static InputFile file; // one for the whole run: creating it costs more than writing it
///     file.write(data, size);
///     ZipFile archive(file.path());
class InputFile
{
public:
    /// Ends the program where the system has no such file to give.
    InputFile();
    ~InputFile();

    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    /// Replaces the content.
    void write(const std::uint8_t* data, std::size_t size);

    /// Where it can be opened, by this process alone.
    const std::string& path() const { return mPath; }

private:
    int mDescriptor;
    std::string mPath;
};

} // namespace Tavik::Fuzz
