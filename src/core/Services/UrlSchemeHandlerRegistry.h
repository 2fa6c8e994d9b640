#pragma once
// Whether Jelv is the user's default handler of a URL scheme, and making it so. The
// desktop keeps these choices in "mimeapps.list" in the user's configuration folder
// ("x-scheme-handler/<scheme>=<desktop file>" under [Default Applications]); only that
// file is read and written, so a system-wide default is not seen here.
#include <QString>

struct UrlSchemeHandlerRegistry {
  static QString desktopId() { return QStringLiteral("org.jelv.Jelv.desktop"); }
  static QString mimeAppsPath();

  // The desktop file named as the scheme's default in the file's text; empty if none.
  static QString defaultHandler(const QString& mimeApps, const QString& scheme);
  // The text with desktopId as the scheme's default (and among its added associations);
  // every other line stays as it was.
  static QString withDefaultHandler(const QString& mimeApps, const QString& scheme, const QString& desktopId);

  static bool isDefaultHandler(const QString& scheme);
  // False when the file cannot be written.
  static bool setDefaultHandler(const QString& scheme);
};
