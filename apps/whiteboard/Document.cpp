#include "whiteboard/Document.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "common/Input.h"
#include "whiteboard/Content.h"

namespace whiteboard {

namespace {

namespace fs = std::filesystem;

std::string NextId(const char* kind) {
  static int last = 0;
  return kind + std::to_string(++last);
}

Page PictureContent(const fs::path& path) {
  Page page = BlankPage();
  page.title = path.filename().string();
  page.content = LoadContent(path.string());
  constexpr int kMaxExtent = 32767;  // of what Cairo stretches
  if (page.content->width > kMaxExtent || page.content->height > kMaxExtent) {
    throw apps::Failure(path.string() + ": the picture is larger than " +
                        std::to_string(kMaxExtent) + " pixels a side");
  }
  return page;
}

bool IsPictureName(const fs::path& path) {
  std::string extension = path.extension().string();
  std::transform(extension.begin(), extension.end(), extension.begin(), [](char letter) {
    return static_cast<char>(letter >= 'A' && letter <= 'Z' ? letter - 'A' + 'a' : letter);
  });
  return extension == ".png" || extension == ".jpg" || extension == ".jpeg" ||
         extension == ".bmp" || extension == ".gif";
}

Document OpenFolder(const fs::path& folder) {
  std::error_code error;
  std::vector<fs::path> files;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error)) {
    if (IsPictureName(entry->path())) {
      files.push_back(entry->path());
    }
  }
  if (error) {
    throw apps::Failure(folder.string() + ": " + error.message());
  }
  if (files.empty()) {
    throw apps::Failure(folder.string() + ": there are no pictures in this folder");
  }
  std::sort(files.begin(), files.end());
  Document document{NextId("document-"), fs::canonical(folder).filename().string(), {}, 0};
  for (const fs::path& file : files) {
    document.pages.push_back(PictureContent(file));
  }
  return document;
}

}  // namespace

double Page::Aspect() const {
  constexpr double kBlank = 16.0 / 10.0;
  return content != nullptr ? static_cast<double>(content->width) / content->height : kBlank;
}

Page BlankPage() {
  Page page;
  page.id = NextId("page-");
  return page;
}

Document BlankDocument(std::size_t number) {
  Document document{NextId("document-"), "Board " + std::to_string(number), {}, 0};
  document.pages.push_back(BlankPage());
  return document;
}

std::vector<Document> OpenContents(const std::vector<std::string>& paths) {
  std::vector<Document> documents;
  Document files{NextId("document-"), "Pictures", {}, 0};
  for (const std::string& path : paths) {
    std::error_code error;
    if (fs::is_directory(path, error)) {
      documents.push_back(OpenFolder(path));
    } else {
      files.pages.push_back(PictureContent(path));
    }
  }
  if (!files.pages.empty()) {
    documents.insert(documents.begin(), std::move(files));
  }
  return documents;
}

}  // namespace whiteboard
