#include <feeds/LineSplitter.h>

namespace Feeds {

void LineSplitter::add(std::string_view bytes, const Receiver& receiver)
{
    for (;;) {
        const std::size_t end = bytes.find_first_of(mEnds);
        append(bytes.substr(0, end));
        if (end == std::string_view::npos) {
            return;
        }
        if (!mBegin.empty() && !mIsTooLong) {
            receiver(mBegin);
        }
        clear();
        if (bytes[end] == mFirst) {
            mBegin = bytes[end];
        }
        bytes.remove_prefix(end + 1);
    }
}

void LineSplitter::clear()
{
    mBegin.clear();
    mIsTooLong = false;
}

void LineSplitter::append(std::string_view part)
{
    mIsTooLong = mIsTooLong || part.size() > LongestLine - mBegin.size();
    if (mIsTooLong) {
        mBegin.clear();
    } else {
        mBegin += part;
    }
}

} // namespace Feeds
