#include <algorithm>
#include <ctime>

#include "common/Input.h"
#include "whiteboard/Content.h"
#include "whiteboard/Seat.h"

namespace whiteboard {

namespace {

std::string TimeStamp() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  char text[32];
  const std::size_t length = std::strftime(text, sizeof text, "%Y%m%d_%H%M%S", &local);
  return {text, length};
}

}  // namespace

Seat::Wish Seat::Do(const Action& action) {
  switch (action.command) {
    case Command::kNone:
      return Wish::kNothing;
    case Command::kQuit:
      return Wish::kQuit;
    case Command::kHelp:
      return Wish::kHelp;
    default:
      break;
  }
  hand.Release();
  try {
    DoStyle(action);
    DoMarks(action.command);
    DoPages(action.command);
  } catch (const apps::Failure& failure) {
    Say(failure.what(), true);
  }
  isPainted = false;
  return Wish::kNothing;
}

void Seat::DoStyle(const Action& action) {
  const int lastWidth = static_cast<int>(kWidths.size()) - 1;
  switch (action.command) {
    case Command::kTool:
      participant.TakeSelection();
      state.style.tool = static_cast<Tool>(action.value);
      break;
    case Command::kColor:
      state.style.color = action.value;
      break;
    case Command::kWidth:
      state.style.width = action.value;
      break;
    case Command::kThinner:
      state.style.width = std::max(state.style.width - 1, 0);
      break;
    case Command::kThicker:
      state.style.width = std::min(state.style.width + 1, lastWidth);
      break;
    case Command::kNickname:
      Ask(Command::kNickname, "Nickname:", participant.Nickname());
      break;
    default:
      break;
  }
}

void Seat::DoMarks(Command command) {
  switch (command) {
    case Command::kCancel:
      participant.TakeSelection();
      Say("");
      break;
    case Command::kDeleteSelection:
      meeting.Erase(participant.TakeSelection());
      break;
    case Command::kTakeBack:
      meeting.TakeBack(participant.UserId());
      break;
    case Command::kClearMine:
      meeting.Clear(participant.UserId());
      break;
    case Command::kClearAll:
      meeting.Clear("");
      break;
    case Command::kPicture:
      Ask(command, "Picture, its path:", "");
      break;
    case Command::kBackground:
      Ask(command, "Background, its path:", "");
      break;
    case Command::kExportPage:
      Export(false);
      break;
    case Command::kExportDocument:
      Export(true);
      break;
    case Command::kClickThrough:
      SetClickThrough();
      break;
    default:
      break;
  }
}

void Seat::DoPages(Command command) {
  switch (command) {
    case Command::kPreviousPage:
      meeting.TurnBy(-1);
      break;
    case Command::kNextPage:
      meeting.TurnBy(1);
      break;
    case Command::kNewPage:
      meeting.NewPage();
      break;
    case Command::kDeletePage:
      meeting.DeletePage();
      break;
    case Command::kNextDocument:
      meeting.NextDocument();
      break;
    case Command::kNewDocument:
      meeting.NewDocument();
      break;
    default:
      break;
  }
}

void Seat::Export(bool wholeDocument) {
  const std::string path = order.exportFolder + "/whiteboard_" + TimeStamp() + ".png";
  const Page& page = meeting.CurrentDocument().CurrentPage();
  bool isWritten = false;
  if (wholeDocument) {
    isWritten = participant.ExportDocument(order.exportFolder);
  } else if (order.overlay || page.content != nullptr) {
    // The page's surface has the marks alone; only the screen has what lies below.
    isWritten = participant.ExportScreen(path);
  } else {
    isWritten = participant.ExportSurface(path);
  }
  const std::string target = wholeDocument ? order.exportFolder : path;
  Say(isWritten ? "Exported to " + target : "Nothing could be exported to " + target, !isWritten);
}

void Seat::SetClickThrough() {
  const bool wanted = !state.clickThrough;
  if (!canvas->SetClickThrough(wanted)) {
    Say("The pointer passes through over the desktop only (--overlay)", true);
    return;
  }
  state.clickThrough = wanted;
  Say(wanted ? "The pointer reaches the desktop" : "The pointer draws");
}

void Seat::Ask(Command command, const std::string& label, const std::string& answer) {
  prompt = {command, label, answer};
}

void Seat::TakeAnswer() {
  const Prompt given = prompt;
  prompt = {};
  try {
    if (given.command == Command::kNickname && !given.answer.empty()) {
      participant.SetNickname(given.answer);
      state.nickname = given.answer;
      window.SetTitle(given.answer + " — whiteboard");
      Say("You are " + given.answer);
    } else if (given.command == Command::kPicture && !given.answer.empty()) {
      PlacePictures({given.answer});
    } else if (given.command == Command::kBackground && !given.answer.empty()) {
      meeting.SetBackground(CleanPath(given.answer));
      Say("");
    }
  } catch (const apps::Failure& failure) {
    Say(failure.what(), true);
  }
}

void Seat::PlacePictures(const std::vector<std::string>& paths) {
  hand.Release();
  try {
    for (const std::string& path : paths) {
      meeting.Relay(participant.PlacePicture(CleanPath(path)));
    }
    if (!paths.empty()) {
      state.style.tool = Tool::kSelect;
      Say("Drag the picture where it belongs");
    }
  } catch (const apps::Failure& failure) {
    Say(failure.what(), true);
  }
}

void Seat::Say(const std::string& message, bool isComplaint) {
  state.message = message;
  state.isComplaint = isComplaint;
  isPainted = false;
}

}  // namespace whiteboard
