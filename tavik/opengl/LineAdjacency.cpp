#include <tavik/opengl/LineAdjacency.h>

#include <algorithm>

namespace Tavik::OpenGL {

void expandAdjacency(const std::vector<std::uint32_t>& indices, std::size_t vertexCount, std::uint32_t separator,
                     std::vector<std::uint32_t>& result)
{
    const std::size_t limit = std::min<std::size_t>(vertexCount, separator);
    const auto endsStrip = [limit](std::uint32_t index) { return index >= limit; };
    result.clear();
    result.reserve(indices.size() + 2);
    for (auto strip = indices.begin(); strip != indices.end();) {
        const auto end = std::find_if(strip, indices.end(), endsStrip);
        if (strip != end) {
            result.push_back(*strip);
            result.insert(result.end(), strip, end);
            result.push_back(*(end - 1));
        }
        strip = end;
        if (strip != indices.end()) {
            result.push_back(separator);
            ++strip;
        }
    }
}

} // namespace Tavik::OpenGL
