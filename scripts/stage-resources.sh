#!/usr/bin/env bash
# Builds the private resource folder beside the executables:
#   git-instance/bin/git            a copy of the system git (the 'local' instance)
#   git-instance/libexec/git-core/  links to the system's git helpers, found through GIT_EXEC_PATH
#   git-instance/git-lfs/git-lfs    put on the child's PATH
#   gitflow-avh/                    the git-flow scripts, put on the child's PATH
#   jelv_askpasswd, jelv_ri, gpg.sh from the source tree
# Usage: stage-resources.sh <source resources dir> <destination dir>
set -euo pipefail
src=$1
dst=$2
mkdir -p "$dst/git-instance/bin" "$dst/git-instance/libexec/git-core" "$dst/git-instance/git-lfs" "$dst/gitflow-avh"

syscore=$(git --exec-path 2>/dev/null || echo /usr/lib/git-core)
sysgit=$(command -v git || echo /usr/bin/git)
# A copy, not a link: the exec path is derived from the resolved location of this file.
if ! cmp -s "$sysgit" "$dst/git-instance/bin/git"; then
  cp -f "$sysgit" "$dst/git-instance/bin/git"
fi
for f in "$syscore"/*; do
  name=$(basename "$f")
  [ -e "$dst/git-instance/libexec/git-core/$name" ] || ln -sf "$f" "$dst/git-instance/libexec/git-core/$name"
done

if command -v git-lfs >/dev/null 2>&1; then
  ln -sf "$(command -v git-lfs)" "$dst/git-instance/git-lfs/git-lfs"
fi
for f in /usr/bin/git-flow /usr/bin/git-flow-* /usr/bin/gitflow-*; do
  [ -e "$f" ] && cp -f "$f" "$dst/gitflow-avh/"
done

for f in jelv_askpasswd jelv_ri gpg.sh; do
  if [ -e "$src/$f" ]; then
    cp -f "$src/$f" "$dst/$f"
    chmod +x "$dst/$f"
  fi
done
