#include <moving_map/ForwardView.h>

#include <moving_map/Contours.h>
#include <moving_map/Palette.h>
#include <moving_map/Units.h>

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace MovingMap {

namespace {

constexpr double HalfWidthDegrees = 25.0;
constexpr double HorizonPart = 0.36; // of the picture's height, from the top

constexpr double NearestMetres = 80.0;
constexpr double FarthestMetres = 60000.0;
constexpr double NearStepMetres = 60.0;
constexpr double FarStep = 0.012; // of the distance: from a few kilometres on, finer steps can hardly be seen

constexpr double EarthRadiusMetres = 6371000.0;
constexpr double Refraction = 0.13; // of the curvature, which bent light makes up for

constexpr double HazeMetres = 32000.0; // in which two thirds of a colour are lost
constexpr double LightGain = 1.0;      // brightness for each metre of rise in a metre, seen from the left

constexpr Color Zenith(0.10f, 0.24f, 0.48f, 1.0f);
constexpr Color Haze(0.60f, 0.69f, 0.78f, 1.0f);
constexpr Color Unknown(0.30f, 0.33f, 0.36f, 1.0f);

Color mixed(Color from, Color to, double part)
{
    return from + (to - from) * static_cast<float>(std::clamp(part, 0.0, 1.0));
}

/// Distances at which the ground is looked at, and how far it has sunk there behind the earth's curve.
struct Sight
{
    double metres;
    double drop;
    float haze;
};

std::vector<Sight> sights()
{
    std::vector<Sight> result;
    double d = NearestMetres;
    while (d < FarthestMetres) {
        const double drop = d * d / (2.0 * EarthRadiusMetres) * (1.0 - Refraction);
        result.push_back({d, drop, static_cast<float>(1.0 - std::exp(-d / HazeMetres))});
        d += std::max(NearStepMetres, FarStep * d);
    }
    return result;
}

class Painter
{
public:
    Painter(const CameraPose& pose, const HeightSource& source, CameraPicture& picture)
        : mPose(pose), mSource(source), mPicture(picture), mPlane(pose.position), mSights(sights()),
          mHorizon(HorizonPart * picture.heightPixels),
          mFocal(0.5 * picture.widthPixels / std::tan(HalfWidthDegrees * RadiansPerDegree)), mLeft(mSights.size(), 0.0)
    {}

    void paint()
    {
        for (int column = 0; column < mPicture.widthPixels; ++column) {
            paintSky(column);
            paintGround(column);
        }
    }

private:
    void put(int column, int row, Color color)
    {
        const auto pixel = static_cast<std::size_t>(row) * static_cast<std::size_t>(mPicture.widthPixels) +
                           static_cast<std::size_t>(column);
        const auto byte = [](float value) {
            return static_cast<unsigned char>(std::clamp(value, 0.0f, 1.0f) * 255.0f);
        };
        mPicture.rgb[3 * pixel] = byte(color.x);
        mPicture.rgb[3 * pixel + 1] = byte(color.y);
        mPicture.rgb[3 * pixel + 2] = byte(color.z);
    }

    void paintSky(int column)
    {
        for (int row = 0; row < mPicture.heightPixels; ++row) {
            put(column, row, mixed(Zenith, Haze, row / mHorizon));
        }
    }

    void paintGround(int column)
    {
        const double aside = (column + 0.5 - 0.5 * mPicture.widthPixels) / mFocal;
        const double offAxis = std::atan(aside);
        const LocalPlane::Point ray = directionOf(mPose.trackDegrees + offAxis * DegreesPerRadian);
        int top = mPicture.heightPixels; // of what has been painted
        for (std::size_t i = 0; i < mSights.size() && top > 0; ++i) {
            const Sight& sight = mSights[i];
            const Position place = mPlane.toPosition(ray * sight.metres);
            const double height = mSource(place.latDegrees, place.lonDegrees);
            const double ground = std::isnan(height) ? 0.0 : height;
            const double depth = sight.metres * std::cos(offAxis);
            const double row = mHorizon + mFocal * (mPose.altitudeMetres - ground + sight.drop) / depth;
            // Rows far outside the picture, and NaN, must not be turned into whole numbers.
            const int highest = row < top ? static_cast<int>(std::fmax(row, 0.0)) : top;
            const double rise = column == 0 ? 0.0 : (ground - mLeft[i]) / (sight.metres / mFocal);
            const Color color = mixed(groundColor(height, rise), Haze, sight.haze);
            while (top > highest) {
                put(column, --top, color);
            }
            mLeft[i] = ground;
        }
    }

    /// @param rise  of the ground from left to right; the light comes from the left
    static Color groundColor(double height, double rise)
    {
        if (std::isnan(height)) {
            return Unknown;
        }
        if (height < CoastMetres) {
            return shaded(Palette::SeaLevel, 0.55f);
        }
        return shaded(heightColor(height), static_cast<float>(std::clamp(0.8 + LightGain * rise, 0.35, 1.25)));
    }

    const CameraPose& mPose;
    const HeightSource& mSource;
    CameraPicture& mPicture;
    LocalPlane mPlane;
    std::vector<Sight> mSights;
    double mHorizon;           // row
    double mFocal;             // pixels
    std::vector<double> mLeft; // heights in the column to the left
};

} // namespace

bool CameraPose::operator==(const CameraPose& other) const
{
    const bool isSameAltitude =
        altitudeMetres == other.altitudeMetres || (std::isnan(altitudeMetres) && std::isnan(other.altitudeMetres));
    return position == other.position && isSameAltitude && trackDegrees == other.trackDegrees;
}

CameraPicture drawForwardView(const CameraPose& pose, const HeightSource& source, int widthPixels, int heightPixels)
{
    CameraPicture picture;
    picture.widthPixels = widthPixels;
    picture.heightPixels = heightPixels;
    picture.rgb.resize(3 * static_cast<std::size_t>(widthPixels) * static_cast<std::size_t>(heightPixels));
    Painter(pose, source, picture).paint();
    return picture;
}

} // namespace MovingMap
