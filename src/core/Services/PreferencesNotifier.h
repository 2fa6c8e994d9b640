#pragma once
// Changes of the preferences and of shared repository data, as signals that views can
// follow. Listeners re-read what they need: no signal carries a value. Posting is
// allowed from any thread; receivers on the main thread get the signal queued there.
#include <QObject>
#include <QString>

class PreferencesNotifier : public QObject {
  Q_OBJECT

 public:
  enum class Notification {
    revisionOrderingChanged,
    remoteServiceStatusChanged,
    diffIgnoreWhitespacesChanged,
    diffContextSizeChanged,
    diffTextViewWordWrapChanged,
    diffShowHiddenSymbolsChanged,
    diffLayoutModeChanged,
    diffTextViewFontChanged,
    repositoryInfoChanged,
    pushAutomaticallyOnCommitChanged,
    enableCommitSpellCheckingChanged,
    useOldToolbarStyleWithLabelsChanged,
    pageGuideLinePositionChanged,
    useMonospaceFontInCommitDescriptionChanged,
    commitSubjectLimitChanged,
    repositoryDataUpdated,
    repositoryStatusUpdated,
    referenceSortOrderChanged,
    updateRepoStatusAutomaticallyChanged,
    showBugtrackerHyperlinksChanged,
    repositoryManagerDataUpdated,
  };
  Q_ENUM(Notification)

  static PreferencesNotifier& shared();

  // The notification's name, for logs.
  static QString name(Notification notification);

  void post(Notification notification);
  // Called by Preferences after each write or removal of a key.
  void keyWritten(const QString& key) { Q_EMIT valueChanged(key); }

 Q_SIGNALS:
  // Every notification, by value; the named signals below follow it.
  void notified(PreferencesNotifier::Notification notification);
  // A key of the store was written or removed.
  void valueChanged(const QString& key);

  void revisionOrderingChanged();
  void remoteServiceStatusChanged();
  void diffIgnoreWhitespacesChanged();
  void diffContextSizeChanged();
  void diffTextViewWordWrapChanged();
  void diffShowHiddenSymbolsChanged();
  void diffLayoutModeChanged();
  void diffTextViewFontChanged();
  void repositoryInfoChanged();
  void pushAutomaticallyOnCommitChanged();
  void enableCommitSpellCheckingChanged();
  void useOldToolbarStyleWithLabelsChanged();
  void pageGuideLinePositionChanged();
  void useMonospaceFontInCommitDescriptionChanged();
  void commitSubjectLimitChanged();
  void repositoryDataUpdated();
  void repositoryStatusUpdated();
  void referenceSortOrderChanged();
  void updateRepoStatusAutomaticallyChanged();
  void showBugtrackerHyperlinksChanged();
  void repositoryManagerDataUpdated();

 private:
  PreferencesNotifier() = default;
};
