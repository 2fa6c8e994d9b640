#pragma once
// A repository's view as its tab shows it, and waits for what it reports.
#include <QSignalSpy>

#include "UI/JelvDocument.h"

inline bool waitFor(JelvDocument& view, void (JelvDocument::*signal)()) {
  QSignalSpy spy(&view, signal);
  return spy.wait(20000);
}

// Shows the view at that size and waits for its first snapshot.
inline bool showLoaded(JelvDocument& view, QSize size = {1200, 800}) {
  view.resize(size);
  QSignalSpy loaded(&view, &JelvDocument::snapshotLoaded);
  view.show();
  return loaded.wait(20000) || !loaded.isEmpty();
}
