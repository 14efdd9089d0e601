#include <tavik/opengl/RunningLength.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace Tavik::OpenGL {

namespace {

using Math::Vector3;

// Vertices are taken in blocks that stay in the first-level cache, so that the compiler can work on several at once.
constexpr std::size_t BlockSize = 256;

// Vertices of a block in pixels, and the last one of the block before it in front.
struct Block
{
    double x[BlockSize + 1];
    double y[BlockSize + 1];
    double z[BlockSize + 1];
    double step[BlockSize];
};

void transformBlock(const Vector3<float>* vertices, std::size_t count, const Math::Matrix4<float>& transform,
                    Math::Vector2<float> viewPort, Block& block)
{
    for (std::size_t i = 0; i < count; ++i) {
        const Vector3<float> v = transform * vertices[i];
        block.x[i + 1] = (static_cast<double>(v.x) + 1.0) * 0.5 * static_cast<double>(viewPort.x);
        block.y[i + 1] = (static_cast<double>(v.y) + 1.0) * 0.5 * static_cast<double>(viewPort.y);
        block.z[i + 1] = static_cast<double>(v.z);
    }
}

void calcSteps(std::size_t count, Block& block)
{
    for (std::size_t i = 0; i < count; ++i) {
        const double dx = block.x[i + 1] - block.x[i];
        const double dy = block.y[i + 1] - block.y[i];
        const double dz = block.z[i + 1] - block.z[i];
        const double step = std::sqrt(dx * dx + dy * dy + dz * dz);
        block.step[i] = step <= static_cast<double>(std::numeric_limits<float>::max()) ? step : 0.0;
    }
}

} // namespace

void calcRunningLength(const std::vector<Vector3<float>>& vertices, const Math::Matrix4<float>& transform,
                       Math::Vector2<float> viewPort, std::vector<float>& lengths)
{
    lengths.resize(vertices.size());
    Block block;
    float sum = 0.0f;
    for (std::size_t start = 0; start < vertices.size(); start += BlockSize) {
        const std::size_t count = std::min(BlockSize, vertices.size() - start);
        transformBlock(vertices.data() + start, count, transform, viewPort, block);
        if (start == 0) {
            block.x[0] = block.x[1];
            block.y[0] = block.y[1];
            block.z[0] = block.z[1];
        }
        calcSteps(count, block);
        for (std::size_t i = 0; i < count; ++i) {
            sum = static_cast<float>(static_cast<double>(sum) + block.step[i]);
            lengths[start + i] = sum;
        }
        block.x[0] = block.x[count];
        block.y[0] = block.y[count];
        block.z[0] = block.z[count];
    }
}

} // namespace Tavik::OpenGL
