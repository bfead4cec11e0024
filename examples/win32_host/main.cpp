// main.cpp - a host on Windows: a meeting of two participants, each with an engine and a layered
// window. The left button draws, the right one erases; Delete clears the page, S saves it to
// page.png, Escape ends the meeting.
#include <map>
#include <memory>
#include <vector>

#include <parchlet/Fragments.h>
#include <parchlet/Parchlet.h>

#include <windowsx.h>

namespace {

constexpr const wchar_t* kClassName = L"ParchletHost";
constexpr const char* kDocument = "board";
constexpr const char* kPage = "page";
constexpr int kWidth = 640;
constexpr int kHeight = 480;
constexpr int kGap = 20;  // between the windows

POINT PointOf(LPARAM position) {
  return {GET_X_LPARAM(position), GET_Y_LPARAM(position)};
}

// One of the people in the meeting, with an engine and a window. In a real host this is one
// process.
struct Participant {
  explicit Participant(const char* name) : userId(name) { engine.SetUserInfo(userId, "", name); }
  ~Participant() {
    engine.Destroy();  // before the window that it pushes frames to
    DestroyWindow(window);
  }
  Participant(const Participant&) = delete;
  Participant& operator=(const Participant&) = delete;

  // A page as large as the window.
  bool OpenPage(unsigned int color) {
    AnnotationPageInfo info{};
    info.width = kWidth;
    info.height = kHeight;
    info.viewRect = {0, 0, kWidth, kHeight};
    engine.SetPen(color, 6);
    engine.SetNicknameTip(0xFFFFFFFF, 14, "", 0xFF404040);
    return engine.Init() == 1 && engine.NewDoc(userId, kDocument) == 1 &&
           engine.NewPage(kDocument, kPage, userId, window, info) == 1;
  }

  std::string userId;
  HWND window = nullptr;
  Parchlet engine;
  POINT last = {0, 0};  // of the eraser
};

// Stands for the server: numbers finished marks, sends them to everybody, and knows their authors.
class Meeting {
 public:
  void Join(Participant& participant) { participants.push_back(&participant); }

  // Sends the mark that the author has just drawn. Its echo confirms it in the author's engine.
  void Relay(Participant& author) {
    std::string docId;
    std::string pageId;
    const std::string id = author.engine.GetCurrentAnnotationInfo(docId, pageId);
    author.engine.EndDrawing();
    const Annotation* drawn = author.engine.GetLocalAnnotation(kDocument, kPage, id);
    if (drawn == nullptr) {
      return;
    }
    authors[id] = author.userId;
    // All fragments first: the echo of the first one already changes the author's mark.
    for (const auto& fragment : parchlet::SplitMark(*drawn, ++order)) {
      for (Participant* participant : participants) {
        participant->engine.AddAnnotationFromRemote(kDocument, kPage,
                                                    std::make_unique<Annotation>(*fragment));
      }
    }
  }

  // Erases what the participant's eraser touches on its way, for everybody.
  void Erase(Participant& eraser, POINT to) {
    const std::vector<std::string> touched =
        eraser.engine.EraseAnnotations(kDocument, kPage, "", "", {eraser.last, to});
    eraser.last = to;
    for (const std::string& id : touched) {
      const auto author = authors.find(id);
      if (author == authors.end()) {
        continue;  // still being drawn
      }
      for (Participant* participant : participants) {
        if (author->second == participant->userId) {
          participant->engine.EraseAnnotation(kDocument, kPage, author->second, id);
        } else {
          participant->engine.EraseAnnotationFromRemote(kDocument, kPage, author->second, id);
        }
      }
    }
  }

  void Clear() {
    for (Participant* participant : participants) {
      participant->engine.ClearAnnotations(kDocument, kPage, "", "");
    }
  }

 private:
  std::vector<Participant*> participants;
  std::map<std::string, std::string> authors;  // of the marks, by their ids
  int order = 0;                               // of the last mark
};

// What a window's messages are about.
struct Seat {
  Participant participant;
  Meeting& meeting;
};

void OnKey(Seat& seat, WPARAM key) {
  if (key == VK_ESCAPE) {
    PostQuitMessage(0);
  } else if (key == VK_DELETE) {
    seat.meeting.Clear();
  } else if (key == 'S') {
    seat.participant.engine.SavePage(kDocument, kPage, "page.png", std::wstring());
  }
}

void OnMove(Seat& seat, WPARAM buttons, POINT point) {
  if ((buttons & MK_LBUTTON) != 0) {
    seat.participant.engine.MoveDrawing(point);
  } else if ((buttons & MK_RBUTTON) != 0) {
    seat.meeting.Erase(seat.participant, point);
  }
}

LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM wide, LPARAM position) {
  auto* seat = reinterpret_cast<Seat*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (seat == nullptr) {
    return DefWindowProcW(window, message, wide, position);
  }
  switch (message) {
    case WM_LBUTTONDOWN:
      SetFocus(window);
      SetCapture(window);
      seat->participant.engine.StartDrawing(kDocument, kPage, PointOf(position));
      return 0;
    case WM_RBUTTONDOWN:
      seat->participant.last = PointOf(position);
      seat->meeting.Erase(seat->participant, PointOf(position));
      return 0;
    case WM_MOUSEMOVE:
      OnMove(*seat, wide, PointOf(position));
      return 0;
    case WM_LBUTTONUP:
      ReleaseCapture();
      seat->meeting.Relay(seat->participant);
      return 0;
    case WM_KEYDOWN:
      OnKey(*seat, wide);
      return 0;
    case WM_CLOSE:
      PostQuitMessage(0);
      return 0;
    default:
      return DefWindowProcW(window, message, wide, position);
  }
}

bool MakeWindow(HINSTANCE instance, Seat& seat, int left) {
  Participant& participant = seat.participant;
  participant.window = CreateWindowExW(WS_EX_LAYERED, kClassName, L"Parchlet", WS_POPUP, left, 0,
                                       kWidth, kHeight, nullptr, nullptr, instance, nullptr);
  if (participant.window == nullptr) {
    return false;
  }
  SetWindowLongPtrW(participant.window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&seat));
  ShowWindow(participant.window, SW_SHOW);
  return true;
}

int Run(HINSTANCE instance) {
  WNDCLASSW description{};
  description.lpfnWndProc = OnMessage;
  description.hInstance = instance;
  description.hCursor = LoadCursor(nullptr, IDC_CROSS);
  description.lpszClassName = kClassName;
  if (RegisterClassW(&description) == 0) {
    return 1;
  }
  Meeting meeting;
  Seat ada{Participant("Ada"), meeting};
  Seat grace{Participant("Grace"), meeting};
  if (!MakeWindow(instance, ada, 0) || !MakeWindow(instance, grace, kWidth + kGap) ||
      !ada.participant.OpenPage(0xFF2266CC) || !grace.participant.OpenPage(0xFFCC4422)) {
    return 1;
  }
  meeting.Join(ada.participant);
  meeting.Join(grace.participant);
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  return 0;
}

}  // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE /*previous*/, LPSTR /*command*/, int /*show*/) {
  return Run(instance);
}
