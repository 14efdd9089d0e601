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

/// Reads samples one after the other, with a look into the map for each chunk.
class SampleReader
{
public:
    explicit SampleReader(const std::map<int, std::vector<float>>& chunks) : mChunks(chunks) {}

    float at(int index)
    {
        if (index / SamplesPerChunk != mIndex) {
            mIndex = index / SamplesPerChunk;
            const auto found = mChunks.find(mIndex);
            mChunk = found == mChunks.end() || found->second.empty() ? nullptr : &found->second;
        }
        return mChunk == nullptr ? Unknown : (*mChunk)[static_cast<std::size_t>(index % SamplesPerChunk)];
    }

private:
    const std::map<int, std::vector<float>>& mChunks;
    const std::vector<float>* mChunk = nullptr;
    int mIndex = -1;
};

} // namespace

void RouteProfile::update(double fromMetres, double toMetres)
{
    const int first = sampleIndex(std::max(fromMetres, 0.0)) / SamplesPerChunk;
    const int last = std::min(sampleIndex(toMetres) + 1, lastSample()) / SamplesPerChunk;
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
            ++mVersion;
        };
    });
}

/// The first one at or behind the end of the path, where the path stands still.
int RouteProfile::lastSample() const
{
    return static_cast<int>(std::ceil(mPath.length() / SpacingMetres));
}

void RouteProfile::surface(double fromMetres, double toMetres, int samplesPerPoint, std::vector<Point>& points) const
{
    points.clear();
    if (toMetres < 0.0 || fromMetres > mPath.length()) {
        return;
    }
    SampleReader samples(mChunks);
    const double step = samplesPerPoint * SpacingMetres;
    const int last = lastSample();
    int middle = static_cast<int>(std::floor(std::max(fromMetres, 0.0) / step)) * samplesPerPoint;
    double distance = 0.0;
    do {
        float highest = Unknown;
        const int end = std::min(middle + samplesPerPoint / 2, last);
        for (int index = std::max(middle - samplesPerPoint / 2, 0); index <= end; ++index) {
            highest = std::fmax(highest, samples.at(index)); // the number, where one of two is NaN
        }
        distance = std::min(middle * SpacingMetres, mPath.length());
        points.push_back({distance, highest});
        middle += samplesPerPoint;
    } while (distance < std::min(toMetres, mPath.length()));
}

} // namespace MovingMap
