#include <moving_map/LostFeeds.h>

#include <moving_map/Palette.h>
#include <tavik/opengl/MatrixStack.h>

#include <algorithm>

namespace MovingMap {

namespace {

using Pixel = MapView::Pixel;

constexpr PerFeed<const char*> Texts = {{{"POSITION LOST", "GPS LOST", "TRAFFIC LOST", "ADS-B LOST"}}};

constexpr float Margin = 10.0f; // to the edges of the map and to the figures
constexpr int TextSize = 18;
constexpr float RowStep = 25.0f;
constexpr unsigned int Width = 188;
constexpr float TextX = 10.0f;

} // namespace

LostFeeds::LostFeeds() : mText(Palette::Attention)
{
    mPanel.setColor(Palette::Panel);
}

void LostFeeds::update(const Scene& scene, const PerFeed<bool>& isLost, const std::optional<Box>& figures)
{
    mBox.reset();
    const auto count = std::count(isLost.begin(), isLost.end(), true);
    if (count == 0) {
        return;
    }
    const float height = RowStep * static_cast<float>(count);
    const float top = (figures ? figures->low.y : static_cast<float>(scene.view.height())) - Margin;
    mBox = Box{{Margin, top - height}, {Margin + static_cast<float>(Width), top}};
    if (isLost == mShown) {
        return;
    }
    mShown = isLost;
    mPanel.setRect(Width, static_cast<unsigned int>(height));
    mText.clear();
    float y = height - 0.5f * RowStep;
    for (std::size_t i = 0; i < FeedCount; ++i) {
        if (isLost[i]) {
            mText.add(Texts[i], {TextX, y}, TextSize, TextAlign::Left);
            y -= RowStep;
        }
    }
}

void LostFeeds::render()
{
    if (!mBox) {
        return;
    }
    Tavik::OpenGL::MatrixPush();
    Tavik::OpenGL::MatrixTranslate(mBox->low.x, mBox->low.y, 0.0);
    mPanel.render();
    mText.render();
    Tavik::OpenGL::MatrixPop();
}

} // namespace MovingMap
