#pragma once
// The open windows of a run, kept by the application itself because the desktop has no
// window restoration: each window's geometry, its tabs in order and the one in front.
// Stored as JSON in the preferences at every change of the tabs and at quit.
#include <QByteArray>
#include <QString>
#include <vector>

struct TabSession {
  enum class Kind { repositoryManager, repository };
  Kind kind = Kind::repositoryManager;
  QString repositoryPath;  // repository tabs only

  bool operator==(const TabSession&) const = default;
};

struct WindowSession {
  QByteArray geometry;  // QWidget::saveGeometry()
  std::vector<TabSession> tabs;
  int currentTab = 0;

  bool operator==(const WindowSession&) const = default;

  static QByteArray encode(const std::vector<WindowSession>& windows);
  // Tolerant: a broken document gives no windows, a bad tab drops out, a window left
  // without tabs drops out, and the front tab is clamped into range.
  static std::vector<WindowSession> decode(const QByteArray& json);

  // The preference that holds the encoded list.
  static QString preferenceKey();
};
