#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <set>
#include <thread>

#include "document/AnnotationDoc.h"
#include "page/AnnotationPage.h"

namespace {

// A local time, stored as if it were UTC.
using Moment = std::chrono::sys_time<std::chrono::milliseconds>;

Moment LocalNow() {
  using namespace std::chrono;
  SYSTEMTIME now{};
  GetLocalTime(&now);
  return sys_days(year(now.wYear) / now.wMonth / now.wDay) + hours(now.wHour) +
         minutes(now.wMinute) + seconds(now.wSecond) + milliseconds(now.wMilliseconds);
}

std::wstring NameOf(Moment moment) {
  using namespace std::chrono;
  const auto midnight = floor<days>(moment);
  const year_month_day date(midnight);
  const hh_mm_ss time(moment - midnight);
  std::array<wchar_t, 256> name{};
  std::swprintf(name.data(), name.size(), L"%04d%02u%02u_%02d%02d%02d.%03d.png", int{date.year()},
                unsigned{date.month()}, unsigned{date.day()},
                static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
                static_cast<int>(time.seconds().count()),
                static_cast<int>(time.subseconds().count()));
  return name.data();
}

// The file names of one export. Each is used once: if two pages are written in one millisecond, or
// the clock is set back, the name is the first free millisecond after the local time.
class FileNames {
 public:
  std::wstring Next() {
    Moment moment = LocalNow();
    while (!taken.insert(moment).second) {
      moment += std::chrono::milliseconds(1);
    }
    latest = std::max(latest, moment);
    return NameOf(moment);
  }
  // How far the names have run ahead of the clock: at most a millisecond a page, unless the clock
  // was set back.
  std::chrono::milliseconds Ahead() const {
    const auto most = std::chrono::milliseconds(taken.size());
    return std::clamp(latest + std::chrono::milliseconds(1) - LocalNow(),
                      std::chrono::milliseconds(0), most);
  }

 private:
  std::set<Moment> taken;
  Moment latest{};
};

// Writes one page to `start` followed by the next name. Returns 0 if the page throws, so that the
// next one is tried.
template <class Source>
int SaveUnderTime(AnnotationPage& page, const std::wstring& start, FileNames& names,
                  const Source& source) {
  try {
    return page.SavePage(start + names.Next(), source);
  } catch (...) {
    return 0;
  }
}

}  // namespace

template <class Source>
int AnnotationDoc::SaveEveryPage(const std::wstring& folder, const std::wstring& prefix,
                                 const Source& source) {
  std::wstring start = folder + L'\\';
  if (!prefix.empty()) {
    start += prefix + L'_';
  }
  FileNames names;
  int result = 0;
  for (const auto& [pageId, page] : pages) {
    result = SaveUnderTime(*page, start, names, source);
  }
  // The next export starts with names that this one has not used.
  std::this_thread::sleep_for(names.Ahead());
  return result;
}

int AnnotationDoc::SaveDocument(const std::wstring& folder, const std::wstring& prefix,
                                const std::wstring& displayDevice) {
  return SaveEveryPage(folder, prefix, displayDevice);
}

int AnnotationDoc::SaveDocument(const std::wstring& folder, const std::wstring& prefix,
                                HWND window) {
  return SaveEveryPage(folder, prefix, window);
}
