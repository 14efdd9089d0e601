#include <tavik/opengl/RunningLength.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace Tavik::OpenGL {

namespace {

using Math::Vector3;

// Vertices are taken in blocks that stay in the first-level cache, one simple loop after the other, so that the
// compiler can work on several vertices at once. Only the sum at the end has to go one by one.
constexpr std::size_t BlockSize = 256;

// Vertices of a block in clip space behind the last one of the block before it, and the steps to each of them.
struct Block
{
    float x[BlockSize + 1];
    float y[BlockSize + 1];
    float z[BlockSize + 1];
    double step[BlockSize];
};

// By value, so that no store into the block can be taken for a change of the matrix.
void transformBlock(const Vector3<float>* vertices, std::size_t count, Math::Matrix4<float> transform, Block& block)
{
    for (std::size_t i = 0; i < count; ++i) {
        const Vector3<float> v = transform * vertices[i];
        block.x[i + 1] = v.x;
        block.y[i + 1] = v.y;
        block.z[i + 1] = v.z;
    }
}

double toPixels(float clip, double size)
{
    return (static_cast<double>(clip) + 1.0) * 0.5 * size;
}

void calcSteps(std::size_t count, double width, double height, Block& block)
{
    for (std::size_t i = 0; i < count; ++i) {
        const double dx = toPixels(block.x[i + 1], width) - toPixels(block.x[i], width);
        const double dy = toPixels(block.y[i + 1], height) - toPixels(block.y[i], height);
        const double dz = static_cast<double>(block.z[i + 1]) - static_cast<double>(block.z[i]);
        block.step[i] = std::sqrt(dx * dx + dy * dy + dz * dz);
    }
}

void copyVertex(std::size_t from, std::size_t to, Block& block)
{
    block.x[to] = block.x[from];
    block.y[to] = block.y[from];
    block.z[to] = block.z[from];
}

} // namespace

void calcRunningLength(const std::vector<Vector3<float>>& vertices, const Math::Matrix4<float>& transform,
                       Math::Vector2<float> viewPort, std::vector<float>& lengths)
{
    constexpr double LongestStep = std::numeric_limits<float>::max();
    const auto width = static_cast<double>(viewPort.x);
    const auto height = static_cast<double>(viewPort.y);
    lengths.resize(vertices.size());
    Block block;
    float sum = 0.0f;
    for (std::size_t start = 0; start < vertices.size(); start += BlockSize) {
        const std::size_t count = std::min(BlockSize, vertices.size() - start);
        transformBlock(vertices.data() + start, count, transform, block);
        if (start == 0) {
            copyVertex(1, 0, block); // no step leads to the first vertex
        }
        calcSteps(count, width, height, block);
        for (std::size_t i = 0; i < count; ++i) {
            const double step = block.step[i];
            sum += step <= LongestStep ? static_cast<float>(step) : 0.0f;
            lengths[start + i] = sum;
        }
        copyVertex(count, 0, block);
    }
}

} // namespace Tavik::OpenGL
