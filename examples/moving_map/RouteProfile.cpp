#include <moving_map/RouteProfile.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace MovingMap {

namespace {

constexpr int SamplesPerChunk = 128;
constexpr std::size_t MostUnderWay = 2;
constexpr float Unknown = std::numeric_limits<float>::quiet_NaN();

int sampleIndex(double distanceMetres)
{
    return static_cast<int>(std::floor(distanceMetres / RouteProfile::SpacingMetres));
}

} // namespace

void RouteProfile::update(double fromMetres, double toMetres)
{
    const int first = sampleIndex(std::max(fromMetres, 0.0)) / SamplesPerChunk;
    const int last = sampleIndex(std::min(toMetres, mPath.length())) / SamplesPerChunk;
    mComplete = true;
    for (int chunk = first; chunk <= last; ++chunk) {
        const auto found = mChunks.find(chunk);
        if (found == mChunks.end() && mUnderWay < MostUnderWay) {
            request(chunk);
        }
        if (found == mChunks.end() || found->second.empty()) {
            mComplete = false;
        }
    }
}

void RouteProfile::request(int chunk)
{
    std::vector<Position> places;
    places.reserve(SamplesPerChunk);
    for (int i = 0; i < SamplesPerChunk; ++i) {
        places.push_back(mPath.at((chunk * SamplesPerChunk + i) * SpacingMetres).position);
    }
    mChunks[chunk] = {};
    ++mUnderWay;
    mWorker.post([this, chunk, places = std::move(places)](Terrain& terrain) -> TerrainWorker::Delivery {
        std::vector<float> heights;
        heights.reserve(places.size());
        for (const Position& place : places) {
            heights.push_back(static_cast<float>(terrain.height(place.latDegrees, place.lonDegrees)));
        }
        return [this, chunk, heights = std::move(heights)] {
            mChunks[chunk] = heights;
            --mUnderWay;
        };
    });
}

float RouteProfile::sample(int index) const
{
    if (index < 0 || index * SpacingMetres > mPath.length()) {
        return Unknown;
    }
    const auto found = mChunks.find(index / SamplesPerChunk);
    if (found == mChunks.end() || found->second.empty()) {
        return Unknown;
    }
    return found->second[static_cast<std::size_t>(index % SamplesPerChunk)];
}

std::vector<float> RouteProfile::highest(double fromMetres, double pieceMetres, std::size_t pieces) const
{
    const int first = sampleIndex(fromMetres);
    const int last = sampleIndex(fromMetres + pieceMetres * static_cast<double>(pieces)) + 1;
    std::vector<float> samples;
    samples.reserve(static_cast<std::size_t>(last - first) + 1);
    for (int index = first; index <= last; ++index) {
        samples.push_back(sample(index));
    }

    std::vector<float> result;
    result.reserve(pieces);
    for (std::size_t piece = 0; piece < pieces; ++piece) {
        const double begin = fromMetres + pieceMetres * static_cast<double>(piece);
        const auto from = static_cast<std::size_t>(sampleIndex(begin) - first);
        const auto to = static_cast<std::size_t>(sampleIndex(begin + pieceMetres) - first);
        float highest = Unknown;
        for (std::size_t i = from; i <= to; ++i) {
            highest = std::fmax(highest, samples[i]); // the number, where one of two is NaN
        }
        result.push_back(highest);
    }
    return result;
}

} // namespace MovingMap
