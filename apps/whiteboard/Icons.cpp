#include "whiteboard/BarPainter.h"

#include <cmath>
#include <initializer_list>
#include <map>

namespace whiteboard {

namespace {

// Icons are drawn on a square of 24 units.
constexpr double kUnits = 24;

struct Spot {
  double x;
  double y;
};

void Lines(cairo_t* painter, std::initializer_list<Spot> spots) {
  for (const Spot& spot : spots) {
    cairo_line_to(painter, spot.x, spot.y);
  }
  cairo_stroke(painter);
}

void Shape(cairo_t* painter, std::initializer_list<Spot> spots) {
  for (const Spot& spot : spots) {
    cairo_line_to(painter, spot.x, spot.y);
  }
  cairo_close_path(painter);
  cairo_stroke(painter);
}

void Circle(cairo_t* painter, double x, double y, double radius) {
  cairo_new_sub_path(painter);
  cairo_arc(painter, x, y, radius, 0, 2 * M_PI);
}

void Pen(cairo_t* painter) {
  Shape(painter, {{4, 20}, {5.2, 15.2}, {15.8, 4.6}, {19.4, 8.2}, {8.8, 18.8}});
  Lines(painter, {{13.4, 7}, {17, 10.6}});
}

void Arrow(cairo_t* painter) {
  Shape(painter,
        {{6, 3.5}, {6, 18.5}, {10, 14.8}, {12.6, 20.5}, {15, 19.4}, {12.4, 13.8}, {17.6, 13.4}});
}

void Ellipse(cairo_t* painter) {
  cairo_save(painter);
  cairo_translate(painter, 12, 12);
  cairo_scale(painter, 9, 6.5);
  Circle(painter, 0, 0, 1);
  cairo_restore(painter);
  cairo_stroke(painter);
}

void Eraser(cairo_t* painter) {
  Shape(painter, {{3.5, 14.5}, {13, 5}, {20, 12}, {12.5, 19.5}, {8.5, 19.5}});
  Lines(painter, {{8.2, 9.8}, {15.2, 16.8}});
  Lines(painter, {{12, 19.5}, {20.5, 19.5}});
}

void PictureFrame(cairo_t* painter) {
  Shape(painter, {{3.5, 5}, {20.5, 5}, {20.5, 19}, {3.5, 19}});
  Lines(painter, {{3.5, 17}, {9, 11}, {13, 15.2}, {16, 12.4}, {20.5, 16.6}});
  Circle(painter, 15.6, 9, 1.4);
  cairo_stroke(painter);
}

void Background(cairo_t* painter) {
  Shape(painter, {{3.5, 3.5}, {20.5, 3.5}, {20.5, 20.5}, {3.5, 20.5}});
  for (const double shift : {5.0, 10.0, 15.0}) {
    Lines(painter, {{3.5, 3.5 + shift}, {3.5 + shift, 3.5}});
  }
  Lines(painter, {{6, 20.5}, {20.5, 6}});
  Lines(painter, {{11.5, 20.5}, {20.5, 11.5}});
}

void TakeBack(cairo_t* painter) {
  Lines(painter, {{8.5, 4.5}, {4, 9}, {8.5, 13.5}});
  cairo_move_to(painter, 4.4, 9);
  cairo_line_to(painter, 14, 9);
  cairo_arc(painter, 14, 14.2, 5.2, -M_PI / 2, M_PI / 2);
  cairo_line_to(painter, 8, 19.4);
  cairo_stroke(painter);
}

void Bin(cairo_t* painter) {
  Lines(painter, {{4.5, 6.5}, {19.5, 6.5}});
  Lines(painter, {{9.5, 6.2}, {9.5, 3.8}, {14.5, 3.8}, {14.5, 6.2}});
  Lines(painter, {{6.2, 6.8}, {7.2, 20.4}, {16.8, 20.4}, {17.8, 6.8}});
}

void ClearMine(cairo_t* painter) {
  Bin(painter);
  Lines(painter, {{12, 10}, {12, 17}});
}

void ClearAll(cairo_t* painter) {
  Bin(painter);
  Lines(painter, {{10, 10}, {10, 17}});
  Lines(painter, {{14, 10}, {14, 17}});
  Lines(painter, {{21.8, 9}, {21.8, 18}});
  Lines(painter, {{2.2, 9}, {2.2, 18}});
}

void Export(cairo_t* painter) {
  Lines(painter, {{12, 14.5}, {12, 3.5}});
  Lines(painter, {{7.8, 7.7}, {12, 3.5}, {16.2, 7.7}});
  Lines(painter, {{4.5, 13}, {4.5, 20}, {19.5, 20}, {19.5, 13}});
}

void Question(cairo_t* painter) {
  Circle(painter, 12, 12, 9);
  cairo_stroke(painter);
  cairo_arc(painter, 12, 9.8, 2.8, M_PI, 2.3 * M_PI);
  cairo_line_to(painter, 12, 13.6);
  cairo_stroke(painter);
  Circle(painter, 12, 16.8, 0.6);
  cairo_stroke(painter);
}

void Through(cairo_t* painter) {
  Shape(painter, {{3.5, 4.5}, {20.5, 4.5}, {20.5, 15}, {3.5, 15}});
  Lines(painter, {{12, 9}, {12, 21}});
  Lines(painter, {{8.6, 17.6}, {12, 21}, {15.4, 17.6}});
}

void DrawTool(cairo_t* painter, Tool tool) {
  switch (tool) {
    case Tool::kPath:
      return Pen(painter);
    case Tool::kLine:
      return Lines(painter, {{4.5, 19.5}, {19.5, 4.5}});
    case Tool::kRectangle:
      return Shape(painter, {{3.5, 6}, {20.5, 6}, {20.5, 18}, {3.5, 18}});
    case Tool::kEllipse:
      return Ellipse(painter);
    case Tool::kTriangle:
      return Shape(painter, {{12, 4.5}, {20.5, 19}, {3.5, 19}});
    case Tool::kRightTriangle:
      return Shape(painter, {{4.5, 4.5}, {20, 19}, {4.5, 19}});
    case Tool::kSelect:
      return Arrow(painter);
    case Tool::kErase:
      return Eraser(painter);
  }
}

void Plus(cairo_t* painter) {
  Lines(painter, {{12, 6}, {12, 18}});
  Lines(painter, {{6, 12}, {18, 12}});
}

void Sheets(cairo_t* painter) {
  Shape(painter, {{4, 7.5}, {14, 7.5}, {14, 20.5}, {4, 20.5}});
  Lines(painter, {{8, 4}, {18.5, 4}, {18.5, 16.5}});
}

void AddedSheet(cairo_t* painter) {
  Lines(painter, {{17, 9}, {17, 4}, {5, 4}, {5, 20.5}, {11, 20.5}});
  Lines(painter, {{17, 13}, {17, 21}});
  Lines(painter, {{13, 17}, {21, 17}});
}

void DrawCommand(cairo_t* painter, Command command) {
  static const std::map<Command, void (*)(cairo_t*)> drawings = {
      {Command::kPicture, PictureFrame},
      {Command::kBackground, Background},
      {Command::kTakeBack, TakeBack},
      {Command::kClearMine, ClearMine},
      {Command::kClearAll, ClearAll},
      {Command::kExportPage, Export},
      {Command::kHelp, Question},
      {Command::kClickThrough, Through},
      {Command::kNewPage, Plus},
      {Command::kNextDocument, Sheets},
      {Command::kNewDocument, AddedSheet},
      {Command::kPreviousPage,
       [](cairo_t* p) {
         Lines(p, {{14.5, 6}, {8.5, 12}, {14.5, 18}});
       }},
      {Command::kNextPage,
       [](cairo_t* p) {
         Lines(p, {{9.5, 6}, {15.5, 12}, {9.5, 18}});
       }},
  };
  const auto found = drawings.find(command);
  if (found != drawings.end()) {
    found->second(painter);
  }
}

}  // namespace

void DrawIcon(cairo_t* painter, const Action& action, double x, double y, double side) {
  cairo_save(painter);
  cairo_translate(painter, x, y);
  cairo_scale(painter, side / kUnits, side / kUnits);
  cairo_set_line_width(painter, 1.7);
  cairo_set_line_cap(painter, CAIRO_LINE_CAP_ROUND);
  cairo_set_line_join(painter, CAIRO_LINE_JOIN_ROUND);
  cairo_new_path(painter);
  if (action.command == Command::kTool) {
    DrawTool(painter, static_cast<Tool>(action.value));
  } else {
    DrawCommand(painter, action.command);
  }
  cairo_restore(painter);
}

}  // namespace whiteboard
