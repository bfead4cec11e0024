#include "document/AnnotationDoc.h"

#include <algorithm>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "page/AnnotationPage.h"

namespace {

AnnotationPage* AddPage(AnnotationDoc& doc, const std::string& id) {
  auto* page = new AnnotationPage;
  page->pageId = id;
  EXPECT_EQ(1, doc.AddPage(page));
  return page;
}

std::string IdOf(const AnnotationPage* page) {
  return page != nullptr ? page->pageId : "none";
}

TEST(AnnotationDocTest, APageThatIsAddedAgainKeepsItsPlace) {
  AnnotationDoc doc;
  EXPECT_EQ(0, doc.AddPage(nullptr));
  AnnotationPage* first = AddPage(doc, "a");
  AddPage(doc, "b");
  EXPECT_EQ(1, doc.AddPage(first));
  EXPECT_EQ(first, doc.GetPageAt(1));
  EXPECT_EQ(first, doc.GetCurrentPage());
  EXPECT_EQ(2, doc.GetPageCount());
}

// Page ids in their order, and the one that is current: what a document is, told plainly.
struct PlainDoc {
  std::vector<std::string> order;
  std::string current = "none";

  void Add(const std::string& id) {
    if (std::find(order.begin(), order.end(), id) == order.end()) {
      order.push_back(id);
    }
    current = id;
  }
  int Delete(const std::string& id) {
    const auto deleted = static_cast<int>(std::erase(order, id));
    if (current == id) {
      current = order.empty() ? "none" : order.front();
    }
    return deleted;
  }
  std::string At(std::ptrdiff_t index) const {
    const bool exists = index >= 1 && index <= std::ssize(order);
    return exists ? order[static_cast<std::size_t>(index - 1)] : "none";
  }
  // The page that many places after the current one.
  std::string Beside(int steps) const {
    const auto place = std::find(order.begin(), order.end(), current) - order.begin() + 1;
    return current == "none" ? current : At(place + steps);
  }
};

void ExpectSame(const PlainDoc& plain, const AnnotationDoc& doc) {
  ASSERT_EQ(std::ssize(plain.order), doc.GetPageCount());
  for (int index = 0; index <= doc.GetPageCount() + 1; ++index) {
    ASSERT_EQ(plain.At(index), IdOf(doc.GetPageAt(index)));
  }
  for (const auto& [id, page] : doc.GetPages()) {
    ASSERT_EQ(id, plain.At(page->pageIndex));
    ASSERT_EQ(page, doc.FindPage(id));
  }
  ASSERT_EQ(plain.At(1), IdOf(doc.GetFirstPage()));
  ASSERT_EQ(plain.At(std::ssize(plain.order)), IdOf(doc.GetLastPage()));
  ASSERT_EQ(plain.current, IdOf(doc.GetCurrentPage()));
  ASSERT_EQ(plain.Beside(1), IdOf(doc.GetNextPage()));
  ASSERT_EQ(plain.Beside(-1), IdOf(doc.GetPreviousPage()));
}

TEST(AnnotationDocTest, IndexesStayDenseUnderAnyAddingDeletingAndTurning) {
  for (unsigned seed = 0; seed < 20; ++seed) {
    std::mt19937 random(seed);
    AnnotationDoc doc;
    PlainDoc plain;
    for (int step = 0; step < 200; ++step) {
      ASSERT_NO_FATAL_FAILURE(ExpectSame(plain, doc)) << "seed " << seed << " step " << step;
      const std::string id(1, static_cast<char>('a' + random() % 8));
      const auto act = random() % 3;
      if (act == 0) {
        AddPage(doc, id);  // over a page of that id, in its place
        plain.Add(id);
      } else if (act == 1) {
        ASSERT_EQ(plain.Delete(id), doc.DeletePage(id));
      } else if (AnnotationPage* page = doc.FindPage(id)) {
        doc.SetCurrentPage(page);
        plain.current = id;
      }
    }
  }
}

}  // namespace
