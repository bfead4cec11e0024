// main.cpp - a host on Windows: a layered window over the main monitor to draw on with the mouse.
// Escape ends it, Delete erases everything.
#include <parchlet/Parchlet.h>

#include <windowsx.h>

namespace {

constexpr const wchar_t* kClassName = L"ParchletHost";
constexpr const char* kUser = "me";
constexpr const char* kDocument = "desktop";
constexpr const char* kPage = "page";

Parchlet& EngineOf(HWND window) {
  return *reinterpret_cast<Parchlet*>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

POINT PointOf(LPARAM position) {
  return {GET_X_LPARAM(position), GET_Y_LPARAM(position)};
}

// Ends the mark in progress and confirms it. In a meeting its echo does that, when it comes back
// from the others.
void EndMark(Parchlet& engine) {
  std::string docId;
  std::string pageId;
  const std::string id = engine.GetCurrentAnnotationInfo(docId, pageId);
  engine.EndDrawing();
  const Annotation* drawn = engine.GetLocalAnnotation(docId, pageId, id);
  if (drawn != nullptr) {
    Annotation echo(*drawn);
    echo.subModelIndex = 0;
    engine.AddAnnotationFromRemote(docId, pageId, &echo);
  }
}

LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM wide, LPARAM position) {
  switch (message) {
    case WM_LBUTTONDOWN:
      SetCapture(window);
      EngineOf(window).StartDrawing(kDocument, kPage, PointOf(position));
      return 0;
    case WM_MOUSEMOVE:
      if (GetCapture() == window) {
        EngineOf(window).MoveDrawing(PointOf(position));
      }
      return 0;
    case WM_LBUTTONUP:
      ReleaseCapture();
      EndMark(EngineOf(window));
      return 0;
    case WM_KEYDOWN:
      if (wide == VK_ESCAPE) {
        PostQuitMessage(0);
      } else if (wide == VK_DELETE) {
        EngineOf(window).ClearAnnotations(kDocument, kPage, "", "");
      }
      return 0;
    default:
      return DefWindowProcW(window, message, wide, position);
  }
}

HWND MakeWindow(HINSTANCE instance, int width, int height) {
  WNDCLASSW description{};
  description.lpfnWndProc = OnMessage;
  description.hInstance = instance;
  description.hCursor = LoadCursor(nullptr, IDC_CROSS);
  description.lpszClassName = kClassName;
  if (RegisterClassW(&description) == 0) {
    return nullptr;
  }
  return CreateWindowExW(WS_EX_LAYERED | WS_EX_TOPMOST, kClassName, L"Parchlet", WS_POPUP, 0, 0,
                         width, height, nullptr, nullptr, instance, nullptr);
}

// A transparent page as large as the window.
bool OpenPage(Parchlet& engine, HWND window, int width, int height) {
  AnnotationPageInfo info{};
  info.width = width;
  info.height = height;
  info.transparent = true;
  info.viewRect = {0, 0, width, height};
  return engine.Init() == 1 && engine.NewDoc(kUser, kDocument) == 1 &&
         engine.NewPage(kDocument, kPage, kUser, window, info) == 1;
}

int Run(HINSTANCE instance) {
  const int width = GetSystemMetrics(SM_CXSCREEN);
  const int height = GetSystemMetrics(SM_CYSCREEN);
  HWND window = MakeWindow(instance, width, height);
  if (window == nullptr) {
    return 1;
  }
  Parchlet engine;
  engine.SetUserInfo(kUser, "", "Me");
  engine.SetPen(0xFFD04030, 6);
  SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&engine));
  if (!OpenPage(engine, window, width, height)) {
    return 1;
  }
  ShowWindow(window, SW_SHOW);
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  engine.Destroy();
  DestroyWindow(window);
  return 0;
}

}  // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE /*previous*/, LPSTR /*command*/, int /*show*/) {
  return Run(instance);
}
