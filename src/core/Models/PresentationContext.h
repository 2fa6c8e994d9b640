#pragma once
#include <QString>
#include <QStringView>

// An append-only text writer. `cursor` is the UTF-16 offset where the next text lands,
// which is what a text view counts in; `line` counts the appends, one per row.
class PresentationContext {
 public:
  PresentationContext() { string_.reserve(1024); }

  void append(QStringView text) {
    string_.append(text);
    cursor_ += text.size();
    ++line_;
  }

  const QString& string() const { return string_; }
  QString takeString() { return std::move(string_); }
  qsizetype cursor() const { return cursor_; }
  qsizetype line() const { return line_; }

 private:
  QString string_;
  qsizetype cursor_ = 0;
  qsizetype line_ = 0;
};
