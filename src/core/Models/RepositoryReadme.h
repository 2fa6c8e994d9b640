#pragma once
// The read-me of a repository's working directory, as HTML for the repository
// manager's details pane. Markdown goes through cmark; a plain-text read-me is shown
// as it is. Only the start of a very large file is read.
#include <QString>
#include <optional>

struct RepositoryReadme {
  static constexpr qint64 maximumBytes = 512 * 1024;

  // README.md, then the other usual names, in any letter case; nothing if none is a file.
  static std::optional<QString> find(const QString& repositoryPath);
  // The file as HTML; nothing when it cannot be read.
  static std::optional<QString> html(const QString& readmePath);
  static QString markdownToHtml(const QByteArray& markdown);
};
