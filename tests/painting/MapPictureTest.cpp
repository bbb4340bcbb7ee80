#include "painting/MapPicture.h"

#include "forms/ColourRoles.h"
#include "forms/Palettes.h"
#include "map/MapGames.h"
#include "painting/Islands.h"
#include "painting/MapPainter.h"
#include "painting/MapPrint.h"
#include "routing/Router.h"
#include "support/Cases.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>

#include <gtest/gtest.h>

namespace zem::test {
namespace {

/// Two rooms side by side, with a place, a stub, a script, and an exit to itself.
routing::RoutedMap SmallMap() {
    return routing::RouteMap(GraphOf(RoomBlock("A", "east <B>\nnorth <Gone>\nwest msg <No.>\nsouth <A>") +
                                     RoomBlock("B", "west <A>\nplace <up to the; Loft>") +
                                     RoomBlock("Loft", "out <B>")),
                             {{0, 0}, {1, 0}, {2, -1}});
}

TEST(MapPicture, IsAPictureOfItsFormat) {
    const routing::RoutedMap map = SmallMap();
    const std::string svg = MapPicture(map, PictureFormatOf("m.SVG"));
    for (const char* text : {"<svg", ">A<", ">B<", ">Loft<", ">Gone?<"})
        EXPECT_NE(svg.find(text), std::string::npos) << text;
    EXPECT_TRUE(MapPicture(map, PictureFormatOf("m.pdf")).starts_with("%PDF"));
    const std::string png = MapPicture(map, PictureFormatOf("m.png"));
    QImage image;
    ASSERT_TRUE(image.loadFromData(QByteArray::fromStdString(png)));
    EXPECT_GT(image.width(), 3 * 128);
    for (const char* name : {"m.gif", "png", "m", ""})
        EXPECT_THROW(PictureFormatOf(name), KelError) << name;
    EXPECT_FALSE(MapPicture({}, PictureFormat::Png).empty()) << "a game without rooms has a map, too";
}

TEST(MapPicture, ShowsLessFromAfarAndMarksWhatIsSelected) {
    const routing::RoutedMap map = SmallMap();
    const MapPainter painter(map);
    const auto paint = [&](double zoom, std::set<int> selected) {
        QImage image(600, 400, QImage::Format_RGB32);
        MapView view;
        view.palette = LightPalette();
        view.zoom = zoom;
        view.visible = QRectF(-100, -150, 600 / zoom, 400 / zoom);
        view.selected = std::move(selected);
        QPainter on(&image);
        on.fillRect(image.rect(), ColourOf(ColourRole::MapGround, view.palette));
        on.scale(zoom, zoom);
        on.translate(100, 150);
        painter.Paint(on, view);
        on.end();
        const auto at = [&](double x, double y) {
            return image.pixelColor(int((x + 100) * zoom), int((y + 150) * zoom));
        };
        return std::array{at(128 + 30, 4), at(64, 0), at(64, -70)};
    };
    const QPalette palette = LightPalette();
    const QColor ground = ColourOf(ColourRole::MapGround, palette);
    for (const double zoom : {.1, .3, 1.0, 2.0}) {
        const auto [box, line, beside] = paint(zoom, {});
        if (zoom < ZoomOfBoxes)
            EXPECT_EQ(box, ColourOf(ColourRole::Frame, palette)) << zoom;
        else
            EXPECT_GT(box.lightness(), 245) << zoom; // the room's own colour, but for a softened edge
        EXPECT_EQ(beside, ground) << zoom;
        if (zoom > .5) {
            EXPECT_NE(line, ground) << zoom;
        }
        EXPECT_NE(paint(zoom, {1})[0], box) << zoom;
    }
}

TEST(MapPicture, DrawsAnOutlineRoundEachIslandButTheLargest) {
    const std::string mainland = RoomBlock("A", "east <B>") + RoomBlock("B", "east <C>") + RoomBlock("C");
    for (const auto& [about, isle, edges] : Cases<std::string, std::string, int>{
             {"no island", "", 0},
             {"a room by itself", RoomBlock("I"), 0},
             {"two rooms, with a cell between them", RoomBlock("I", "east <J>") + RoomBlock("J"), 8},
             {"joined by a place alone", RoomBlock("I", "east <J>\nplace <B>") + RoomBlock("J"), 8},
             {"joined by a script", RoomBlock("I", "east <J>\nnorth goto <B>") + RoomBlock("J"), 0},
         }) {
        const map::MapGraph graph = GraphOf(mainland + isle);
        std::vector<map::Cell> cells{{0, 0}, {1, 0}, {2, 0}, {0, 4}, {2, 4}};
        cells.resize(graph.names.size());
        EXPECT_EQ(IslandOutlines(routing::RouteMap(graph, cells)).size(), edges) << about;
    }
}

TEST(MapPicture, IsPrintedOnOnePageOrOnAsManyAsNamesNeed) {
    std::string row;
    std::vector<map::Cell> cells;
    for (int room = 0; room < 60; ++room) {
        row += RoomBlock("R" + std::to_string(room), "east <R" + std::to_string(room + 1) + ">");
        cells.push_back({room, 0});
    }
    const auto pages = [](const routing::RoutedMap& map) {
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        QPdfWriter pdf(&buffer);
        pdf.setPageSize(QPageSize(QPageSize::A4));
        PrintMap(pdf, map);
        return bytes.count("/Type /Page\n");
    };
    EXPECT_EQ(pages(SmallMap()), 1);
    const auto many = pages(routing::RouteMap(GraphOf(row), cells));
    EXPECT_GT(many, 2);
    EXPECT_LT(many, 10) << "no empty pages below";
}

} // namespace
} // namespace zem::test
