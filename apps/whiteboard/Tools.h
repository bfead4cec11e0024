// Tools.h - what the pointer does on the page, and what a button or a key asks for.
#pragma once

#include <array>
#include <cstdint>

namespace whiteboard {

enum class Tool {
  kPath,
  kLine,
  kRectangle,
  kEllipse,
  kTriangle,
  kRightTriangle,
  kSelect,
  kErase,
};

// 0xAARRGGBB; the last one is a translucent marker.
inline constexpr std::array<std::uint32_t, 8> kColors = {
    0xFF1F2933, 0xFFE03131, 0xFFF08C00, 0xFF2F9E44, 0xFF1971C2, 0xFF7048E8, 0xFFFFFFFF, 0x66FFD43B};
// Pixels.
inline constexpr std::array<unsigned int, 4> kWidths = {2, 5, 10, 22};

// What one participant draws with; colour and width are indices into the tables above.
struct Style {
  Tool tool = Tool::kPath;
  int color = 0;
  int width = 1;
};

enum class Command {
  kNone,
  kTool,   // the value is a Tool
  kColor,  // the value is an index into kColors
  kWidth,  // the value is an index into kWidths
  kThinner,
  kThicker,
  kPicture,
  kBackground,
  kDeleteSelection,
  kTakeBack,
  kClearMine,
  kClearAll,
  kPreviousPage,
  kNextPage,
  kNewPage,
  kDeletePage,
  kNextDocument,
  kNewDocument,
  kNickname,
  kExportPage,
  kExportDocument,
  kClickThrough,
  kHelp,
  kCancel,
  kQuit,
};

struct Action {
  Command command = Command::kNone;
  int value = 0;
};

}  // namespace whiteboard
