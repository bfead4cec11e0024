#include <memory>

#include <parchlet/Parchlet.h>

#include "document/AnnotationDoc.h"
#include "engine/Contain.h"
#include "engine/LogRecord.h"

int Parchlet::IsDocExist(const std::string& docId) {
  return Contain(0, [&] {
    if (documents.contains(docId)) {
      return 1;
    }
    PARCHLET_LOG(kLogFailure, "Parchlet::IsDocExist")
        << "doc does not exist, docid=" << docId.c_str();
    return 0;
  });
}

int Parchlet::NewDoc(const std::string& creator, const std::string& docId) {
  return Contain(0, [&] {
    if (IsDocExist(docId) != 0) {
      PARCHLET_LOG(kLogFailure, "Parchlet::NewDoc")
          << "doc is already exist, docid=" << docId.c_str();
      return 1;
    }
    auto document = std::make_unique<AnnotationDoc>();
    document->id = docId;
    document->creator = creator;
    // The record of its absence went to the host's logger, which may have called the engine.
    if (!documents.try_emplace(docId, document.get()).second) {
      return 1;
    }
    currentDocument = document.release();
    PublishCurrentPage();
    return 1;
  });
}

int Parchlet::DelDoc(const std::string& docId) {
  if (IsDocExist(docId) == 0) {
    return 0;
  }
  const auto found = documents.find(docId);
  AnnotationDoc* document = found->second;
  documents.erase(found);
  if (document == currentDocument) {
    currentDocument = nullptr;
    PublishCurrentPage();
  }
  delete document;
  return 1;
}

void Parchlet::ClearDocs() {
  for (const auto& [docId, document] : documents) {
    delete document;
  }
  documents.clear();
}

int Parchlet::GetDocCount() {
  return static_cast<int>(documents.size());
}

AnnotationDoc* Parchlet::GetDocById(const std::string& docId) {
  return IsDocExist(docId) != 0 ? documents.find(docId)->second : nullptr;
}

int Parchlet::GetDocCreator(const std::string& docId, std::string& creator) {
  return Contain(0, [&] {
    const AnnotationDoc* document = GetDocById(docId);
    if (document == nullptr) {
      return 0;
    }
    creator = document->creator;
    return 1;
  });
}

int Parchlet::IsDocOpened(const std::string& /*docId*/, std::string& /*out*/) {
  return 1;
}
