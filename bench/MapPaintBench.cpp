// What the map costs while an author moves about in it: painting a frame of 1600 x 1000 pixels at several
// zooms, and moving a room, in a game of 5,000 rooms. Processor time in milliseconds; a frame has 16.
#include "Clock.h"
#include "MadeMap.h"
#include "forms/Palettes.h"
#include "map/Layout.h"
#include "painting/MapMarks.h"
#include "painting/MapPainter.h"
#include "reader/LoadGame.h"
#include "routing/Router.h"

#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cstdio>
#include <random>

namespace {

using namespace zem;

constexpr int Rooms = 5'000;
constexpr QSize Window(1600, 1000);
constexpr double Frame = 16; // milliseconds

struct Times {
    std::vector<double> all;

    double Median() {
        std::nth_element(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(all.size() / 2), all.end());
        return all[all.size() / 2];
    }
    double Worst() const { return *std::max_element(all.begin(), all.end()); }
};

template <class Work>
double Milliseconds(Work work) {
    const bench::ThreadClock::time_point begin = bench::ThreadClock::now();
    work();
    return bench::Seconds(bench::ThreadClock::now() - begin) * 1000;
}

bool Print(const char* what, Times& times) {
    std::printf("%-28s median %6.2f  worst %6.2f\n", what, times.Median(), times.Worst());
    return times.Median() <= Frame;
}

map::MapGraph GraphOfMade() {
    GameModel game;
    ReadGame(game, bench::MakeMap({Rooms, 5, 5, 1}).file);
    return map::ReadMapGraph(game);
}

Times PaintAt(const MapPainter& painter, const QRectF& bounds, double zoom) {
    QImage image(Window, QImage::Format_RGB32);
    Times times;
    std::mt19937 random(1);
    for (int frame = 0; frame < 40; ++frame) {
        MapView view;
        view.palette = LightPalette();
        view.zoom = zoom;
        const QSizeF seen = QSizeF(Window) / zoom;
        const double x = bounds.width() * static_cast<int>(random() % 100) / 100.0;
        const double y = bounds.height() * static_cast<int>(random() % 100) / 100.0;
        view.visible =
            QRectF(bounds.topLeft() + QPointF(x, y) - QPointF(seen.width(), seen.height()) / 2, seen);
        if (seen.width() >= bounds.width())
            view.visible.moveCenter(bounds.center());
        times.all.push_back(Milliseconds([&] {
            QPainter on(&image);
            on.fillRect(image.rect(), Qt::white);
            on.scale(zoom, zoom);
            on.translate(-view.visible.topLeft());
            painter.Paint(on, view);
        }));
    }
    return times;
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const map::MapGraph graph = GraphOfMade();
    map::LayoutControl control;
    control.steps = 400'000'000; // the place of each room does not matter much here
    const std::vector<map::Cell> cells = map::LayOut(graph, control);
    std::unique_ptr<routing::Router> router;
    std::printf("all lines routed             %6.1f\n",
                Milliseconds([&] { router = std::make_unique<routing::Router>(graph, cells); }));
    MapPainter painter(router->Map());
    const QRectF bounds = ToQt(router->Map().Bounds());
    const double fit = std::min(Window.width() / bounds.width(), Window.height() / bounds.height());
    bool isGood = true;
    for (const double zoom : {1.0, .5, .25, .1, fit}) {
        Times times = PaintAt(painter, bounds, zoom);
        isGood &= Print(("painted at " + std::to_string(zoom)).c_str(), times);
    }
    Times moves;
    std::mt19937 random(2);
    while (moves.all.size() < 100) {
        const auto room = static_cast<int>(random() % Rooms);
        const map::Cell to =
            router->Map().rooms[static_cast<std::size_t>(room)].cell +
            map::Cell{static_cast<int>(random() % 3) - 1, static_cast<int>(random() % 3) - 1};
        if (router->RoomAt(to) == map::NoRoom)
            moves.all.push_back(Milliseconds([&] { painter.Update(router->MoveRooms({{room, to}})); }));
    }
    isGood &= Print("a room moved", moves);
    return isGood ? 0 : 1;
}
