#include <fuzz/InputFile.h>

#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace Tavik::Fuzz {

namespace {

void endIf(bool failed, const char* what)
{
    if (failed) {
        std::perror(what);
        std::exit(EXIT_FAILURE);
    }
}

} // namespace

InputFile::InputFile()
    : mDescriptor(memfd_create("fuzz input", MFD_CLOEXEC)), mPath("/proc/self/fd/" + std::to_string(mDescriptor))
{
    endIf(mDescriptor < 0, "memfd_create");
}

InputFile::~InputFile()
{
    close(mDescriptor);
}

void InputFile::write(const std::uint8_t* data, std::size_t size)
{
    endIf(ftruncate(mDescriptor, 0) != 0, "ftruncate");
    endIf(pwrite(mDescriptor, data, size, 0) != static_cast<ssize_t>(size), "pwrite");
}

} // namespace Tavik::Fuzz
