#include "whiteboard/Canvas.h"

#include <algorithm>

#include <parchlet/x11/X11Overlay.h>
#include <parchlet/x11/X11Window.h>

#include "common/Input.h"
#include "whiteboard/Content.h"
#include "whiteboard/ContentWindow.h"

namespace whiteboard {

namespace {

class WindowCanvas final : public Canvas {
 public:
  explicit WindowCanvas(HostWindow& host)
      : host(host), window(host.AddPage()), target("", window), blended(target) {
    if (target.Handle() == nullptr) {
      throw apps::Failure(target.GetError());
    }
  }

  HWND Handle() const override { return blended.Handle(); }
  xcb_window_t Window() const override { return window; }

  SIZE Place(const Page& page, const RECT& area) override {
    const SIZE size = {area.right - area.left, area.bottom - area.top};
    if (page.id != shownPage || size.cx != shownSize.cx || size.cy != shownSize.cy) {
      blended.SetContent(Render(page.content.get(), size.cx, size.cy));
    }
    host.PlacePage(area);
    shownPage = page.id;
    shownSize = size;
    return size;
  }

  bool SetClickThrough(bool /*clickThrough*/) override { return false; }

 private:
  HostWindow& host;
  xcb_window_t window;
  X11Window target;
  ContentWindow blended;
  std::string shownPage;
  SIZE shownSize = {0, 0};
};

class OverlayCanvas final : public Canvas {
 public:
  OverlayCanvas(XSession& session, HostWindow& tools, const std::string& monitor)
      : overlay("", RECT{}) {
    if (overlay.Handle() == nullptr || !overlay.FollowMonitor(monitor)) {
      throw apps::Failure(overlay.GetError());
    }
    if (!overlay.IsBlended()) {
      throw apps::Failure(
          "drawing over the desktop takes a compositor, such as picom, and none runs");
    }
    const std::uint32_t events =
        kPointerEvents | XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    const std::uint32_t window = overlay.WindowId();
    xcb_change_window_attributes(session.Get(), window, XCB_CW_EVENT_MASK, &events);
    xcb_flush(session.Get());
    // Without a window manager it would come up above the tools.
    overlay.KeepBelow(tools.Id());
  }

  HWND Handle() const override { return overlay.Handle(); }
  xcb_window_t Window() const override { return overlay.WindowId(); }

  SIZE Place(const Page& /*page*/, const RECT& /*area*/) override {
    const RECT area = overlay.GetScreenRect();
    return {std::max(area.right - area.left, 1), std::max(area.bottom - area.top, 1)};
  }

  bool SetClickThrough(bool clickThrough) override { return overlay.SetClickThrough(clickThrough); }

 private:
  X11Overlay overlay;
};

}  // namespace

std::unique_ptr<Canvas> MakeWindowCanvas(HostWindow& window) {
  return std::make_unique<WindowCanvas>(window);
}

std::unique_ptr<Canvas> MakeOverlayCanvas(XSession& session, HostWindow& tools,
                                          const std::string& monitor) {
  return std::make_unique<OverlayCanvas>(session, tools, monitor);
}

}  // namespace whiteboard
