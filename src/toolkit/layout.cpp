#include "toolkit/layout.h"

namespace fathomline {

Layout Layout::Words(std::string text) {
  Layout words(Kind::Words, {});
  words.text_ = std::move(text);
  return words;
}

Layout Layout::Form(std::vector<FormLine> lines) {
  Layout form(Kind::Form, {});
  for (FormLine& line : lines) {
    form.children_.push_back(Words(std::move(line.words)));
    form.children_.push_back(std::move(line.content));
  }
  return form;
}

Layout Layout::Table(int columns, std::vector<Layout> cells) {
  Layout table(Kind::Table, std::move(cells));
  table.columns_ = columns;
  return table;
}

Layout Layout::Charts(int columns, std::vector<Layout> charts) {
  return AlikeCharts(columns, std::move(charts), {});
}

Layout Layout::AlikeCharts(int columns, std::vector<Layout> charts, std::string nothing) {
  Layout all(Kind::Charts, std::move(charts));
  all.columns_ = columns;
  all.text_ = std::move(nothing);
  return all;
}

Layout Layout::Box(Frame& frame, Layout content) {
  Layout box(Kind::Box, {});
  box.control_ = &frame;
  box.children_.push_back(std::move(content));
  return box;
}

Layout Layout::Pages(Choices& tabs, std::vector<Layout> pages) {
  Layout all(Kind::Pages, std::move(pages));
  all.control_ = &tabs;
  return all;
}

}  // namespace fathomline
