// A route that a thread of its own works out, while the window goes on being drawn.

#include <support/FrameLoop.h>

#include <tavik/geodetic/EarthModel.h>
#include <tavik/geodetic/Turns.h>
#include <tavik/misc/CmdLine.h>
#include <tavik/misc/Mutex.h>
#include <tavik/opengl/GlHandler.h>
#include <tavik/opengl/LineStrips.h>
#include <tavik/opengl/MatrixStack.h>

#include <GL/gl.h>

#include <cstdlib>
#include <thread>

using namespace Tavik;

using Point = Math::Vector2<float>;

// Hands a finished line from the thread that works to the thread that draws.
class RouteMailbox
{
public:
    void put(std::vector<Point> points)
    {
        mMutex.lock();
        mPoints = std::move(points);
        mMutex.unlock();
    }

    // Empty where nothing new has come.
    std::vector<Point> take()
    {
        mMutex.lock();
        std::vector<Point> points = std::move(mPoints);
        mPoints.clear();
        mMutex.unlock();
        return points;
    }

private:
    Misc::Mutex mMutex;
    std::vector<Point> mPoints;
};

// Geodesy and plane geometry may be used on any thread.
void workOutRoute(RouteMailbox& mailbox)
{
    const double fixes[][2] = {{46.9, 7.5}, {47.3, 7.9}, {46.8, 8.3}, {47.2, 8.9}};
    std::vector<Math::Vector2<double>> corners;
    for (const auto& fix : fixes) {
        double x = 0.0, y = 0.0;
        Geodetic::latLong2Grid(47.0, 8.2, fix[0], fix[1], x, y);
        corners.emplace_back(x, y);
    }
    std::vector<Point> line = {Point(float(corners.front().x), float(corners.front().y))};
    for (std::size_t i = 1; i + 1 < corners.size(); ++i) {
        bool limited = false;
        for (const auto& p :
             Geodetic::calcFlyByPoints(corners[i - 1], corners[i], corners[i + 1], 6000.0, 2, limited)) {
            line.emplace_back(float(p.x), float(p.y));
        }
    }
    line.emplace_back(float(corners.back().x), float(corners.back().y));
    mailbox.put(std::move(line));
}

int main(int argc, char** argv)
{
    Misc::CmdLine& options = Misc::CmdLine::instance();
    options.addParameter("--screenshot", "write a picture and stop", "");
    if (!options.parse(argc, argv)) {
        options.printUsage();
        return EXIT_FAILURE;
    }
    std::string screenshot;
    options.getParameter("--screenshot", screenshot);

    RouteMailbox mailbox;
    std::thread worker(workOutRoute, std::ref(mailbox));
    Support::Window window("Route", 640, 400, Support::visibilityFor(screenshot));
    if (!screenshot.empty()) {
        worker.join(); // a picture is of one frame, and that one shall have the route
    }

    // Drawables belong to the thread of the window from here on. This one lives shorter than the window, as it must.
    OpenGL::LineStrips route;
    route.setLineWidth(4.0f);
    route.setColor({0.9f, 0.3f, 0.8f, 1.0f});
    const int result = Support::showFrames(window, screenshot, [&] {
        const std::vector<Point> points = mailbox.take();
        if (!points.empty()) {
            route.clearVertex(); // keeps its memory
            route.addLineStrip(points);
        }
        const Point size = OpenGL::GlHandler::instance().viewPort();
        OpenGL::MatrixScale(2.0 / size.x, 2.0 / size.y, 1.0); // pixels from the middle of the window
        OpenGL::MatrixPush();
        OpenGL::MatrixScale(1.0 / 190.0, 1.0 / 190.0, 1.0); // 190 m a pixel
        route.render(-1);
        OpenGL::MatrixPop();

        OpenGL::GlHandler::clearError(); // older errors are not of the call below
        glLineWidth(1.0f);
        OpenGL::GlHandler::checkError("glLineWidth", __PRETTY_FUNCTION__);
    });
    if (worker.joinable()) {
        worker.join();
    }
    return result;
}
