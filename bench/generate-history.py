#!/usr/bin/env python3
"""Writes a deterministic synthetic history with git fast-import.

Several topic branches are alive at once (so the graph has parallel lanes); each
lives a few commits and merges back into main, sometimes several at once (an octopus).
Files are renamed now and then, tags (light and annotated) mark every few hundred
commits, and a few topic branches are left unmerged. Same arguments, same history.

With --branches N the history is wide instead: N long-lived branches grow side by side
from the first commit, merge main in and are merged into main now and then, and are
never deleted, so N lanes run through the whole list.

usage: generate-history.py [--commits N] [--seed S] [--branches N] DESTINATION
"""
import argparse
import os
import random
import subprocess
import sys


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--commits", type=int, default=50000)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--branches", type=int, default=0)
    parser.add_argument("destination")
    args = parser.parse_args()

    rnd = random.Random(args.seed)
    dest = args.destination
    os.makedirs(dest, exist_ok=True)
    subprocess.run(["git", "init", "-q", "-b", "main", dest], check=True)
    proc = subprocess.Popen(["git", "fast-import", "--quiet", "--done"], cwd=dest, stdin=subprocess.PIPE)
    out = proc.stdin

    def w(text):
        out.write(text.encode("utf-8"))

    def data(payload):
        raw = payload.encode("utf-8")
        out.write(b"data %d\n" % len(raw))
        out.write(raw)
        out.write(b"\n")

    authors = [("Ada Lovelace", "ada@example.com"), ("Ben Kowalski", "ben@example.com"),
               ("Chloé Durand", "chloe@example.com"), ("Dmitri Ivanov", "dmitri@example.com"),
               ("Eve Okafor", "eve@example.com"), ("Fumiko Tanaka", "fumiko@example.com")]
    dirs = ["src", "src/core", "src/ui", "docs", "tests", "lib/net", "lib/db"]
    files = ["%s/file%04d.txt" % (rnd.choice(dirs), i) for i in range(600)]
    words = "parser graph cache index merge fetch render layout buffer token stream lane commit".split()

    mark = 0
    time = 1500000000
    heads = {}          # branch name -> mark of its tip
    branch_of_topic = []  # live topics: [name, remaining commits]
    topic_counter = 0
    main_paths = set()
    count = 0

    def commit(branch, parents, message, changes):
        nonlocal mark, time, count
        mark += 1
        time += rnd.randint(30, 4000)
        name, email = authors[rnd.randrange(len(authors))]
        w("commit refs/heads/%s\nmark :%d\n" % (branch, mark))
        w("author %s <%s> %d +0000\n" % (name, email, time))
        w("committer %s <%s> %d +0000\n" % (name, email, time))
        data(message)
        if parents:
            w("from :%d\n" % parents[0])
            for p in parents[1:]:
                w("merge :%d\n" % p)
        for change in changes:
            w(change)
        w("\n")
        heads[branch] = mark
        count += 1
        return mark

    def edit_changes():
        changes = []
        for _ in range(rnd.randint(1, 3)):
            path = rnd.choice(files)
            body = " ".join(rnd.choice(words) for _ in range(rnd.randint(3, 12)))
            raw = (body + "\n").encode("utf-8")
            changes.append("M 100644 inline %s\ndata %d\n%s\n" % (path, len(raw), raw.decode("utf-8")))
        return changes

    def subject():
        return "%s %s %s" % (rnd.choice(["Fix", "Add", "Refactor", "Tune", "Document"]),
                             rnd.choice(words), rnd.choice(words))

    commit("main", [], "Initial commit\n", ["M 100644 inline README\ndata 6\nhello\n\n"])
    lines = ["line/b%03d" % i for i in range(args.branches)]
    for name in lines:
        heads[name] = heads["main"]
    while lines and count < args.commits:
        name = rnd.choice(lines)
        r = rnd.random()
        if r < 0.02:
            commit(name, [heads[name], heads["main"]], "Merge main into %s\n" % name, [])
        elif r < 0.04:
            commit("main", [heads["main"], heads[name]], "Merge %s\n" % name, [])
        elif r < 0.2:
            commit("main", [heads["main"]], subject() + "\n", edit_changes())
        else:
            commit(name, [heads[name]], subject() + "\n", edit_changes())
        if count % 500 == 0:
            w("reset refs/tags/light-%d\nfrom :%d\n\n" % (count, heads["main"]))
    while count < args.commits:
        r = rnd.random()
        if r < 0.06 and len(branch_of_topic) < 5:
            topic_counter += 1
            name = "topic/t%05d" % topic_counter
            heads[name] = heads["main"]
            branch_of_topic.append([name, rnd.randint(2, 25)])
            continue
        if branch_of_topic and r < 0.55:
            topic = rnd.choice(branch_of_topic)
            commit(topic[0], [heads[topic[0]]], subject() + "\n", edit_changes())
            topic[1] -= 1
            if topic[1] <= 0:
                branch_of_topic.remove(topic)
                # Most topics merge; some get an octopus with another; a few stay open.
                if rnd.random() < 0.93:
                    parents = [heads["main"], heads[topic[0]]]
                    if branch_of_topic and rnd.random() < 0.05:
                        other = branch_of_topic.pop(0)
                        parents.append(heads[other[0]])
                    commit("main", parents, "Merge %s\n" % topic[0], [])
            continue
        changes = edit_changes()
        candidates = [f for f in files if f in main_paths and not any(f in c for c in changes)]
        if candidates and rnd.random() < 0.01:
            old = rnd.choice(candidates)
            new = "%s/renamed%05d.txt" % (rnd.choice(dirs), count)
            changes.append("R %s %s\n" % (old, new))
            files[files.index(old)] = new
            main_paths.discard(old)
            main_paths.add(new)
        for c in changes:
            if c.startswith("M "):
                main_paths.add(c.split(" ", 3)[3].split("\n", 1)[0])
        commit("main", [heads["main"]], subject() + "\n\nLonger description of the change.\n", changes)
        if count % 500 == 0:
            if (count // 500) % 2:
                w("tag v%d.%d\nfrom :%d\ntagger Release Bot <rel@example.com> %d +0000\n" % (count // 5000, (count // 500) % 10, heads["main"], time))
                data("Release %d\n" % count)
            else:
                w("reset refs/tags/light-%d\nfrom :%d\n\n" % (count, heads["main"]))
    w("done\n")
    out.close()
    if proc.wait() != 0:
        sys.exit("fast-import failed")
    subprocess.run(["git", "checkout", "-q", "-f", "main"], cwd=dest, check=True)
    # Merged topics would only clutter the labels; the open ones stay.
    merged = subprocess.run(["git", "for-each-ref", "--merged", "main", "--format=delete %(refname)", "refs/heads/topic"],
                            cwd=dest, check=True, capture_output=True).stdout
    subprocess.run(["git", "update-ref", "--stdin"], cwd=dest, input=merged, check=True)
    subprocess.run(["git", "gc", "-q", "--auto"], cwd=dest, check=False)


if __name__ == "__main__":
    main()
