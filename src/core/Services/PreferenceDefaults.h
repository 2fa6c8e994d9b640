#pragma once
// The registered defaults of the application's preferences, in order of registration.
// One table gives both the defaults and the typed accessors of Preferences, so a key
// cannot have an accessor without a default or the other way round. The misspelt keys
// are what existing stores hold; they stay.
//
// X(type, getter, Setter, "key", default)
#define JELV_PREFERENCE_DEFAULTS(X)                                                              \
  X(bool, oldTabs, OldTabs, "OldTabs", false)                                                    \
  X(bool, enabledTabsOnFirstRun, EnabledTabsOnFirstRun, "enabledTabsOnFirstRun", false)          \
  X(bool, useTopologicalCommitOrder, UseTopologicalCommitOrder, "useTopologicalCommitOrder", true) \
  X(bool, fetchRemotesAutomatically, FetchRemotesAutomatically, "fetchRemotesAutomatically", true) \
  X(bool, updateSubmodulesAutomatically, UpdateSubmodulesAutomatically, "updateSubmodulesAutomatically", false) \
  X(int, revisionDiffLayoutMode, RevisionDiffLayoutMode, "revisionDiffLayoutMode", 0)            \
  X(int, popupDiffLayoutMode, PopupDiffLayoutMode, "popupDiffLayoutMode", 1)                     \
  X(int, commitDiffLayoutMode, CommitDiffLayoutMode, "commitDiffLayoutMode", 0)                  \
  X(int, historyDiffLayoutMode, HistoryDiffLayoutMode, "historyDiffLayoutMode", 0)               \
  X(bool, useOldToolbarStyleWithLabels, UseOldToolbarStyleWithLabels, "useOldToolbarStyleWithLabels", false) \
  X(bool, enableCommitSpellChecking, EnableCommitSpellChecking, "enableCommitSpellChecking", true) \
  X(bool, pushSheetPushAllTags, PushSheetPushAllTags, "pushSheetPushAllTags", false)             \
  X(bool, pullSheetRebase, PullSheetRebase, "pullSheetRebase", false)                            \
  X(bool, pullSheetStashAndReapply, PullSheetStashAndReapply, "pullSheetStashAndReapply", false) \
  X(bool, fetchSheetPrune, FetchSheetPrune, "fetchSheetPrune", false)                            \
  X(bool, fetchSheetFetchAllTags, FetchSheetFetchAllTags, "fetchSheetFetchAllTags", false)       \
  X(bool, fetchSheetFetchAllRemotes, FetchSheetFetchAllRemotes, "fetchSheetFetchAllRemotes", false) \
  X(bool, rebaseSheetAutostash, RebaseSheetAutostash, "rebaseSheetAutostash", false)             \
  X(bool, createBranchSheetCheckout, CreateBranchSheetCheckout, "createBranchSheetCheckout", true) \
  X(bool, createBranchSheetCheckoutDontRemember, CreateBranchSheetCheckoutDontRemember,          \
    "createBranchSheetCheckoutDontRemember", false)                                              \
  X(bool, saveStashSheetStageNewFiles, SaveStashSheetStageNewFiles, "saveStashSheetStageNewFiles", true) \
  X(bool, disableSyntaxHighlighting, DisableSyntaxHighlighting, "disableSyntaxHighlighting", false) \
  X(bool, pushAutomacicallyOnCommit, PushAutomacicallyOnCommit, "pushAutomacicallyOnCommit", false) \
  X(int, commitSubjectLimitLow, CommitSubjectLimitLow, "commitSubjectLimitLow", 50)              \
  X(int, commitSubjectLimitHigh, CommitSubjectLimitHigh, "commitSubjectLimitHigh", 70)           \
  X(bool, createInteractiveRabaseBackup, CreateInteractiveRabaseBackup, "createInteractiveRabaseBackup", false) \
  X(bool, noFastForwardOnMerge, NoFastForwardOnMerge, "noFastForwardOnMerge", true)              \
  X(bool, deleteStashAfterApply, DeleteStashAfterApply, "deleteStashAfterApply", false)          \
  X(int, fileListMode, FileListMode, "fileListMode", 0)                                          \
  X(int, localBranchSortOrder, LocalBranchSortOrder, "localBranchSortOrder", 2)                  \
  X(int, remoteBranchSortOrder, RemoteBranchSortOrder, "remoteBranchSortOrder", 2)               \
  X(int, tagSortOrder, TagSortOrder, "tagSortOrder", 1)                                          \
  X(int, appearance, Appearance, "appearance", 0)                                                \
  X(int, terminalClient, TerminalClient, "terminalClient", 0)                                    \
  X(int, defaultCloneNetworkProtocol, DefaultCloneNetworkProtocol, "defaultCloneNetworkProtocol", 0) \
  X(bool, checkoutBranchSheetStashAndReapply, CheckoutBranchSheetStashAndReapply,                \
    "checkoutBranchSheetStashAndReapply", false)                                                 \
  X(bool, showBugtrackerHyperlinks, ShowBugtrackerHyperlinks, "showBugtrackerHyperlinks", true)  \
  X(int, automaticStatusUpdateInterval, AutomaticStatusUpdateInterval, "automaticStatusUpdateInterval", 60) \
  X(bool, disableAutomaticStatusUpdate, DisableAutomaticStatusUpdate, "disableAutomaticStatusUpdate", false) \
  X(bool, migratedToNewRepositoryManager, MigratedToNewRepositoryManager, "migratedToNewRepositoryManager", false) \
  X(int, applicationUpdateChannel, ApplicationUpdateChannel, "applicationUpdateChannel", 2)      \
  X(int, contextSize, ContextSize, "contextSize", 3)                                             \
  X(bool, diffIgnoreWhitespaces, DiffIgnoreWhitespaces, "diffIgnoreWhitespaces", false)          \
  X(bool, diffShowEntireFile, DiffShowEntireFile, "diffShowEntireFile", false)                   \
  X(bool, diffShowHiddenSymbols, DiffShowHiddenSymbols, "diffShowHiddenSymbols", false)          \
  X(bool, diffWordWrap, DiffWordWrap, "diffWordWrapKey", false)                                  \
  X(int, externalDiffTool, ExternalDiffTool, "externalDiffTool", 0)                              \
  X(int, mergeTool, MergeTool, "mergeTool", 0)                                                   \
  X(bool, disableExternalAvatarService, DisableExternalAvatarService, "disableExternalAvatarService", false) \
  X(int, maxCommitCount, MaxCommitCount, "maxCommitCount", 50000)                               \
  X(bool, keepCommitGraphUpToDate, KeepCommitGraphUpToDate, "keepCommitGraphUpToDate", true)     \
  X(bool, commitGraphChangedPaths, CommitGraphChangedPaths, "commitGraphChangedPaths", false)
