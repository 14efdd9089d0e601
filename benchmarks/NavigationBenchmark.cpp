// Great-circle distance and bearing between random points, and fly-by arcs. Items are point pairs, and arc points.

#include <tavik/geodetic/EarthModel.h>
#include <tavik/geodetic/Turns.h>

#include <benchmark/benchmark.h>

#ifdef TAVIK_PEER_S2
#include <s2/s2earth.h>
#include <s2/s2latlng.h>
#endif
#ifdef TAVIK_PEER_GEOGRAPHICLIB
#include <GeographicLib/Geodesic.hpp>
#endif

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <new>
#include <random>
#include <vector>

using Vector = Tavik::Math::Vector2<double>;

// Every allocation of the program is counted, the library's included.
static std::int64_t allocationCount = 0;

[[gnu::noinline]] void* operator new(std::size_t size)
{
    ++allocationCount;
    if (void* memory = std::malloc(size)) {
        return memory;
    }
    throw std::bad_alloc();
}

[[gnu::noinline]] void operator delete(void* memory) noexcept
{
    std::free(memory);
}

[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

namespace {

constexpr double Radian = 57.29577951308232;
constexpr std::size_t PairCount = 1024;

/// Sine and cosine of an angle in degrees by one call.
class SinCos
{
public:
    explicit SinCos(double degrees) { ::sincos(degrees * (1.0 / Radian), &mResults[0], &mResults[2]); }

    double sine() const { return mResults[0]; }
    double cosine() const { return mResults[2]; }

private:
    double mResults[3]; // with a gap, because one load of both would wait for the two stores
};

struct Pair
{
    double lat1, lon1, lat2, lon2;
};

const std::vector<Pair>& pairs()
{
    static const std::vector<Pair> all = [] {
        std::mt19937_64 generator(1);
        std::uniform_real_distribution<double> lat(-90.0, 90.0);
        std::uniform_real_distribution<double> lon(-180.0, 180.0);
        std::vector<Pair> random(PairCount);
        for (Pair& pair : random) {
            pair = {lat(generator), lon(generator), lat(generator), lon(generator)};
        }
        return random;
    }();
    return all;
}

template <typename Function>
void measurePairs(benchmark::State& state, Function&& function)
{
    const std::vector<Pair>& all = pairs();
    for ([[maybe_unused]] auto _ : state) {
        for (const Pair& pair : all) {
            benchmark::DoNotOptimize(function(pair));
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(PairCount));
}

void distanceOurs(benchmark::State& state)
{
    measurePairs(state, [](const Pair& p) { return Tavik::Geodetic::calcDistance(p.lat1, p.lon1, p.lat2, p.lon2); });
}
BENCHMARK(distanceOurs)->Name("distance/ours");

/// The sines, cosines and the arc cosine of the distance.
void distanceLimit(benchmark::State& state)
{
    measurePairs(state, [](const Pair& p) {
        const SinCos lat1(p.lat1);
        const SinCos lat2(p.lat2);
        const double cosDelta = std::cos((p.lon2 - p.lon1) * (1.0 / Radian));
        return std::acos(lat1.sine() * lat2.sine() + lat1.cosine() * lat2.cosine() * cosDelta);
    });
}
BENCHMARK(distanceLimit)->Name("distance/limit");

void bearingOurs(benchmark::State& state)
{
    measurePairs(state, [](const Pair& p) { return Tavik::Geodetic::calcBearing(p.lat1, p.lon1, p.lat2, p.lon2); });
}
BENCHMARK(bearingOurs)->Name("bearing/ours");

/// The sines, cosines and the arc tangent of the bearing.
void bearingLimit(benchmark::State& state)
{
    measurePairs(state, [](const Pair& p) {
        const SinCos lat1(p.lat1);
        const SinCos lat2(p.lat2);
        const SinCos delta(p.lon2 - p.lon1);
        return std::atan2(delta.sine() * lat2.cosine(),
                          lat1.cosine() * lat2.sine() - lat1.sine() * lat2.cosine() * delta.cosine());
    });
}
BENCHMARK(bearingLimit)->Name("bearing/limit");

#ifdef TAVIK_PEER_S2
void distanceS2(benchmark::State& state)
{
    measurePairs(state, [](const Pair& p) {
        return S2Earth::GetDistanceMeters(S2LatLng::FromDegrees(p.lat1, p.lon1), S2LatLng::FromDegrees(p.lat2, p.lon2));
    });
}
BENCHMARK(distanceS2)->Name("distance/peer_s2");

void bearingS2(benchmark::State& state)
{
    measurePairs(state, [](const Pair& p) {
        return S2Earth::GetInitialBearing(S2LatLng::FromDegrees(p.lat1, p.lon1), S2LatLng::FromDegrees(p.lat2, p.lon2))
            .degrees();
    });
}
BENCHMARK(bearingS2)->Name("bearing/peer_s2");
#endif

#ifdef TAVIK_PEER_GEOGRAPHICLIB
/// The ellipsoid's geodesic: more than is asked for, and exact.
void distanceGeographicLib(benchmark::State& state)
{
    measurePairs(state, [](const Pair& p) {
        double metres = 0.0;
        GeographicLib::Geodesic::WGS84().Inverse(p.lat1, p.lon1, p.lat2, p.lon2, metres);
        return metres;
    });
}
BENCHMARK(distanceGeographicLib)->Name("distance/peer_geographiclib");

void bearingGeographicLib(benchmark::State& state)
{
    measurePairs(state, [](const Pair& p) {
        double start = 0.0;
        double end = 0.0;
        GeographicLib::Geodesic::WGS84().Inverse(p.lat1, p.lon1, p.lat2, p.lon2, start, end);
        return start;
    });
}
BENCHMARK(bearingGeographicLib)->Name("bearing/peer_geographiclib");
#endif

constexpr double TurnRadius = 3000.0;

/// Legs of 20 km whose course changes by 60 to 120 degrees to the right.
struct Corner
{
    Vector previous, waypoint, next;
    Vector centre;
    double firstCourse;
    std::size_t pointCount;
};

const std::vector<Corner>& corners()
{
    static const std::vector<Corner> all = [] {
        constexpr double Leg = 20000.0;
        std::mt19937_64 generator(2);
        std::uniform_real_distribution<double> course(0.0, 360.0);
        std::uniform_real_distribution<double> change(60.0, 120.0);
        const auto along = [](double degrees) {
            return Vector(std::sin(degrees / Radian), std::cos(degrees / Radian));
        };
        std::vector<Corner> random(64);
        for (Corner& corner : random) {
            const double inbound = course(generator);
            const double turn = change(generator);
            const double toTangent = TurnRadius * std::tan(turn / 2.0 / Radian);
            corner.previous = along(inbound) * -Leg;
            corner.next = along(inbound + turn) * Leg;
            corner.centre = along(inbound) * -toTangent + along(inbound + 90.0) * TurnRadius;
            // The courses from the centre that the library goes through: the first lies in [0, 360).
            corner.firstCourse = std::fmod(inbound + 270.0, 360.0) + 1.0;
            corner.pointCount = static_cast<std::size_t>(std::ceil(turn)) - 1;
        }
        return random;
    }();
    return all;
}

std::int64_t cornerPointCount()
{
    std::int64_t count = 0;
    for (const Corner& corner : corners()) {
        count += static_cast<std::int64_t>(corner.pointCount);
    }
    return count;
}

void flyByOurs(benchmark::State& state)
{
    const std::vector<Corner>& all = corners();
    std::size_t pointCount = 0;
    const std::int64_t allocationsBefore = allocationCount;
    for ([[maybe_unused]] auto _ : state) {
        for (const Corner& corner : all) {
            bool limited = false;
            const std::vector<Vector> arc =
                Tavik::Geodetic::calcFlyByPoints(corner.previous, corner.waypoint, corner.next, TurnRadius, 2, limited);
            benchmark::DoNotOptimize(arc.data());
            pointCount += arc.size();
        }
    }
    const std::int64_t allocations = allocationCount - allocationsBefore;
    if (pointCount != static_cast<std::size_t>(state.iterations() * cornerPointCount())) {
        state.SkipWithError("the arcs do not have the points that the limit computes");
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(pointCount));
    state.counters["allocations_per_call"] =
        static_cast<double>(allocations) / (static_cast<double>(state.iterations()) * static_cast<double>(all.size()));
}
BENCHMARK(flyByOurs)->Name("fly_by_arc/ours");

/// One sine and cosine for each point, into an array that is there already.
void flyByLimit(benchmark::State& state)
{
    const std::vector<Corner>& all = corners();
    std::array<Vector, 360> points;
    for ([[maybe_unused]] auto _ : state) {
        for (const Corner& corner : all) {
            for (std::size_t i = 0; i < corner.pointCount; ++i) {
                const SinCos direction(corner.firstCourse + static_cast<double>(i));
                points[i] = {corner.centre.x + TurnRadius * direction.sine(),
                             corner.centre.y + TurnRadius * direction.cosine()};
            }
            benchmark::DoNotOptimize(points);
        }
    }
    state.SetItemsProcessed(state.iterations() * cornerPointCount());
}
BENCHMARK(flyByLimit)->Name("fly_by_arc/limit");

} // namespace
