#include "document/AnnotationDoc.h"

#include <algorithm>
#include <random>

#include <gmock/gmock.h>

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

TEST(AnnotationDocTest, AnEmptyDocumentHasNoPages) {
  AnnotationDoc doc;
  EXPECT_EQ(nullptr, doc.GetCurrentPage());
  EXPECT_EQ(nullptr, doc.GetFirstPage());
  EXPECT_EQ(nullptr, doc.GetLastPage());
  EXPECT_EQ(nullptr, doc.GetNextPage());
  EXPECT_EQ(nullptr, doc.GetPreviousPage());
  EXPECT_EQ(nullptr, doc.GetPageAt(0));
  EXPECT_EQ(nullptr, doc.FindPage(""));
  EXPECT_EQ(0, doc.DeletePage(""));
  EXPECT_EQ(0, doc.AddPage(nullptr));
}

TEST(AnnotationDocTest, APageOverAnIdThatIsPresentTakesItsPlace) {
  AnnotationDoc doc;
  AddPage(doc, "a");
  AddPage(doc, "b");
  AddPage(doc, "c");
  AnnotationPage* second = AddPage(doc, "b");
  EXPECT_EQ(3, doc.GetPageCount());
  EXPECT_EQ(second, doc.GetPageAt(2));
  EXPECT_EQ(second, doc.GetCurrentPage());
  EXPECT_EQ(1, doc.AddPage(second)) << "its own place";
  EXPECT_EQ(second, doc.GetPageAt(2));
  EXPECT_EQ(4, AddPage(doc, "d")->pageIndex);
}

TEST(AnnotationDocTest, ACopyOfTheMapHoldsTheSamePages) {
  AnnotationDoc doc;
  AnnotationPage* page = AddPage(doc, "a");
  std::map<std::string, AnnotationPage*> copy = doc.GetPages();
  EXPECT_THAT(copy, testing::ElementsAre(testing::Pair("a", page)));
  copy.clear();
  EXPECT_EQ(1, doc.GetPageCount());
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
  bool Delete(const std::string& id) {
    if (std::erase(order, id) == 0) {
      return false;
    }
    if (current == id) {
      current = order.empty() ? "none" : order.front();
    }
    return true;
  }
  std::string At(std::ptrdiff_t index) const {
    const bool exists = index >= 1 && index <= std::ssize(order);
    return exists ? order[static_cast<std::size_t>(index - 1)] : "none";
  }
  std::ptrdiff_t CurrentIndex() const {
    return std::find(order.begin(), order.end(), current) - order.begin() + 1;
  }
};

void ExpectSame(const PlainDoc& plain, const AnnotationDoc& doc) {
  ASSERT_EQ(std::ssize(plain.order), doc.GetPageCount());
  for (int index = 0; index <= doc.GetPageCount() + 1; ++index) {
    ASSERT_EQ(plain.At(index), IdOf(doc.GetPageAt(index)));
  }
  for (const auto& [id, page] : doc.GetPages()) {
    ASSERT_EQ(id, plain.At(page->pageIndex));
  }
  ASSERT_EQ(plain.At(1), IdOf(doc.GetFirstPage()));
  ASSERT_EQ(plain.At(std::ssize(plain.order)), IdOf(doc.GetLastPage()));
  ASSERT_EQ(plain.current, IdOf(doc.GetCurrentPage()));
  const bool any = doc.GetCurrentPage() != nullptr;
  ASSERT_EQ(any ? plain.At(plain.CurrentIndex() + 1) : "none", IdOf(doc.GetNextPage()));
  ASSERT_EQ(any ? plain.At(plain.CurrentIndex() - 1) : "none", IdOf(doc.GetPreviousPage()));
}

TEST(AnnotationDocTest, IndexesStayDenseUnderAnyAddingDeletingAndTurning) {
  for (unsigned seed = 0; seed < 20; ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    AnnotationDoc doc;
    PlainDoc plain;
    for (int step = 0; step < 200; ++step) {
      const std::string id(1, static_cast<char>('a' + random() % 8));
      switch (random() % 3) {
        case 0:
          AddPage(doc, id);
          plain.Add(id);
          break;
        case 1:
          ASSERT_EQ(plain.Delete(id) ? 1 : 0, doc.DeletePage(id));
          break;
        default:
          if (AnnotationPage* page = doc.FindPage(id)) {
            doc.SetCurrentPage(page);
            plain.current = id;
          }
      }
      ASSERT_NO_FATAL_FAILURE(ExpectSame(plain, doc)) << "step " << step;
    }
  }
}

}  // namespace
