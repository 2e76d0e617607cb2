"""How well and how cheaply near_text and other tools find pairs that are known. See scripts/bench_pairs.

Prints a table in Markdown. All tools compare the same texts, prepared, each in a process of its own, whose
processor time and peak of memory are measured whole. F1 is that of the pairs that a tool keeps: the best
entries of each text, or those that are also among the best of both sides (mutual). near_text keeps them at
60 percent; each of the others at the cut-off that is best for it, which only known pairs tell.
"""

import argparse
import collections
import csv
import importlib.util
import json
import os
import random
import re
import subprocess
import sys
import tempfile
from pathlib import Path

PERCENT = 60
COMMON_WORDS = 20


class Set:
    """Texts, entries and their pairs, by what their first columns call them."""

    def __init__(self, folder):
        self.folder = Path(folder)
        self.text_ids, self.texts = self.read("texts.csv")
        self.entry_ids, self.entries = self.read("entries.csv")
        self.known = {tuple(row[:2]) for row in self.rows("pairs.csv")[1:]}

    def rows(self, name):
        with open(self.folder / name, encoding="utf-8", newline="") as file:
            return [row for row in csv.reader(file) if row]

    def read(self, name):
        rows = self.rows(name)[1:]
        return [row[0] for row in rows], [" ".join(filter(None, row[1:])) for row in rows]

    def columns(self, name):
        return ",".join(str(i) for i in range(2, len(self.rows(name)[0]) + 1))

    def f1(self, kept, right):
        return 2 * right / (kept + len(self.known))


def prepared(text):
    return " ".join(re.sub(r"[\W_]+", " ", text.lower()).split())


# Sets that are there without a folder of them.


def write_set(folder, texts, entries, pairs):
    folder.mkdir(parents=True)
    for name, rows in (
        ("texts.csv", [("id", "text"), *enumerate(texts, 1)]),
        ("entries.csv", [("id", "text"), *enumerate(entries, 1)]),
        ("pairs.csv", [("text_id", "entry_id"), *pairs]),
    ):
        with open(folder / name, "w", encoding="utf-8", newline="") as file:
            csv.writer(file).writerows(rows)
    return folder


def write_samples(folder, samples):
    def lines(name):
        return (samples / name).read_text("utf-8").splitlines()

    pairs = [line.split("\t")[:2] for line in lines("pairs.tsv")[1:]]
    return write_set(folder, lines("supplier.txt"), lines("catalogue.txt"), pairs)


def write_people(folder, count=1000):
    """Names, dates of birth and telephone numbers; in either list up to two errors in each, at any place."""
    chance = random.Random(1)

    def name():
        return "".join(chance.choice("bdfgklmnprstv") + chance.choice("aeiou") for _ in range(chance.randint(2, 4)))

    def person():
        birth = f"{chance.randint(1, 28):02}.{chance.randint(1, 12):02}.{chance.randint(1930, 2010)}"
        return f"{name()} {name()} {birth} {chance.randint(10**6, 10**7)}"

    def mistyped(text):
        for _ in range(chance.randint(0, 2)):
            at = chance.randrange(len(text))
            keys = "0123456789" if text[at].isdigit() else "abcdefghijklmnopqrstuvwxyz"
            text = text[:at] + chance.choice(keys) + text[at + 1 :]
        return text

    people = [person() for _ in range(count)]
    return write_set(folder, map(mistyped, people), map(mistyped, people), ((i, i) for i in range(1, count + 1)))


# near_text.


def match_command(program, data, options):
    return [program, "match", "--prepare", "--percent", str(PERCENT), "--jobs", "1", "--format", "json", "--header",
            "--texts", data.folder / "texts.csv", "--text-column", data.columns("texts.csv"), "--keep", "1",
            "--entries", data.folder / "entries.csv", "--entry-column", data.columns("entries.csv"),
            "--keep-entry", "1", "--matched", *options]  # fmt: skip


def match_f1(data, output):
    kept = set()
    for row in map(json.loads, output.splitlines()):
        kept.update((*row["kept"].values(), *match["kept"].values()) for match in row["matches"])
    return data.f1(len(kept), len(kept & data.known))


def common_words(data, scratch):
    words = collections.Counter(word for text in data.texts + data.entries for word in prepared(text).split())
    path = scratch / f"{data.folder.name}_words"
    path.write_text("\n".join(word for word, _ in words.most_common(COMMON_WORDS)) + "\n", "utf-8")
    return path


# The others. Each gives, for one text after the other, how alike every entry is.


def token_scores(scorer):
    def scores(texts, entries):
        from rapidfuzz import fuzz, process

        for begin in range(0, len(texts), 100):
            yield from process.cdist(texts[begin : begin + 100], entries, scorer=getattr(fuzz, scorer))

    return scores


def gram_scores(texts, entries):
    from sklearn.feature_extraction.text import TfidfVectorizer

    grams = TfidfVectorizer(analyzer="char_wb", ngram_range=(3, 3)).fit(texts + entries)
    of_entries = grams.transform(entries).T.tocsr()
    for text in grams.transform(texts):
        yield (text @ of_entries).toarray()[0]


OTHERS = {
    "RapidFuzz token_sort_ratio": ("rapidfuzz", token_scores("token_sort_ratio")),
    "RapidFuzz token_set_ratio": ("rapidfuzz", token_scores("token_set_ratio")),
    "TF-IDF of 3-grams": ("sklearn", gram_scores),
}


def best_cut(data, pairs):
    """The highest F1 of the pairs that have at least some score, and that score."""
    best, right = (0, 0), 0
    pairs.sort(key=lambda pair: -pair[0])
    for i, (score, text, entry) in enumerate(pairs):
        right += (data.text_ids[text], data.entry_ids[entry]) in data.known
        if i + 1 == len(pairs) or pairs[i + 1][0] < score:
            best = max(best, (data.f1(i + 1, right), score))
    return best


def measure_other(data, scores):
    """Of the best entries of each text, and of those for which it is among their best too."""
    import numpy

    best, highest = [], numpy.zeros(len(data.entries))
    for text, row in enumerate(scores([prepared(t) for t in data.texts], [prepared(e) for e in data.entries])):
        highest = numpy.maximum(highest, row)
        if row.max() > 0:
            best += [(row.max(), text, entry) for entry in numpy.flatnonzero(row == row.max())]
    mutual = [pair for pair in best if pair[0] >= highest[pair[2]]]
    return [[float(number) for number in best_cut(data, pairs)] for pairs in (best, mutual)]


# The table.


def measured(command, worst_status=0):
    """What it prints, its processor seconds and its peak of memory in MiB."""
    with tempfile.TemporaryFile() as output, tempfile.TemporaryFile() as errors:
        process = subprocess.Popen(command, stdout=output, stderr=errors)
        _, status, usage = os.wait4(process.pid, 0)
        output.seek(0)
        errors.seek(0)
        if os.waitstatus_to_exitcode(status) not in range(worst_status + 1):
            raise SystemExit(f"failed: {' '.join(map(str, command))}\n{errors.read().decode()}")
        return output.read().decode("utf-8"), usage.ru_utime + usage.ru_stime, usage.ru_maxrss / 1024


def rows(data, program, scratch):
    words = common_words(data, scratch)
    for options in (["--best"], ["--best", "--same-numbers"], ["--mutual"], ["--mutual", "--same-numbers"],
                    ["--mutual", "--drop-words", words], ["--mutual", "--exclusions", words]):  # fmt: skip
        output, seconds, peak = measured(match_command(program, data, options), worst_status=1)
        shown = " ".join(options[:-1] + [f"({COMMON_WORDS} words)"] if words in options else options)
        yield f"near_text {shown}", match_f1(data, output), PERCENT, seconds, peak
    for name, (module, _) in OTHERS.items():
        if importlib.util.find_spec(module) is None:
            continue
        output, seconds, peak = measured([sys.executable, __file__, "--other", name, data.folder])
        for kept, (f1, cut) in zip(("best", "mutual"), json.loads(output)):
            yield f"{name}, {kept}", f1, round(cut * (100 if cut <= 1 else 1)), seconds, peak


def folders_of_sets(folders):
    for folder in map(Path, folders):
        sets = [path.parent for path in sorted([*folder.glob("pairs.csv"), *folder.glob("*/pairs.csv")])]
        if not sets:
            raise SystemExit(f"{folder}: no folder with texts.csv, entries.csv and pairs.csv")
        yield from sets


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--other")
    parser.add_argument("--program", type=Path)
    parser.add_argument("--samples", type=Path)
    parser.add_argument("folders", nargs="*")
    given = parser.parse_args()
    if given.other:
        print(json.dumps(measure_other(Set(given.folders[0]), OTHERS[given.other][1])))
        return
    print("| set | tool | F1 | percent | processor seconds | peak MiB |\n|---|---|--:|--:|--:|--:|")
    with tempfile.TemporaryDirectory() as folder:
        scratch = Path(folder)
        made = [write_samples(scratch / "samples", given.samples), write_people(scratch / "people")]
        for data in map(Set, [*made, *folders_of_sets(given.folders)]):
            title = f"{data.folder.name}, {len(data.texts)} × {len(data.entries)}, {len(data.known)} pairs"
            for tool, f1, cut, seconds, peak in rows(data, given.program.resolve(), scratch):
                print(f"| {title} | {tool} | {f1:.3f} | {cut} | {seconds:.2f} | {peak:.0f} |", flush=True)


if __name__ == "__main__":
    main()
