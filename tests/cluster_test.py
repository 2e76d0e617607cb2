"""The example for data frames, on a cluster of a scheduler and two worker processes of which one is killed,
gives the rows of a single run. Usage: cluster_test.py PROGRAM ENTRIES TEXTS, files of lines."""
import csv
import functools
import os
import signal
import subprocess
import sys
import tempfile
import time

import distributed
import pandas

import near_text_frames


def table(lines):
    """Among them texts with quotes, line feeds and Cyrillic letters, blank ones and some that fail."""
    texts = []
    for i, line in enumerate(lines):
        odd = {0: f'"{line}", said', 1: line.replace(" ", "\n"), 2: line + " молоток", 3: "",
               4: "x" * 1001, 5: line.replace(" ", "\r\n"), 6: line + "\0"}
        texts.append(odd.get(i % 50, line))
    return pandas.DataFrame({"id": [f"№ {i}" for i in range(len(texts))], "text": texts})


def rows_of(frames):
    frames = list(frames)
    if not frames:
        return []
    frame = pandas.concat(frames)
    return frame.astype(object).where(frame.notna(), "").astype(str).values.tolist()


def answered(part, match, log):
    with open(log, "a") as begun:
        begun.write("begun\n")
    frames = (part[at:at + 300] for at in range(0, len(part), 300))
    return rows_of(match(frames))


def main(program, entries, texts):
    whole = table(open(texts, encoding="utf-8").read().split("\n")[:-1])
    options = ["--percent", "75", "--jobs", "1"]
    match = functools.partial(near_text_frames.match, entries=entries, id_column="id", text_column="text",
                              options=options, program=program)
    with tempfile.TemporaryDirectory() as folder:
        file = folder + "/whole.csv"
        whole[["text", "id"]].to_csv(file, index=False, header=False)
        single = subprocess.run(
            [program, "match", "--part", "-t", file, "-e", entries, "--text-column", "1", "--keep", "2",
             "--format", "csv", *options], check=True, capture_output=True).stdout.decode().replace("\0", "")
        expected = [[row[-1], *row[1:-1]] for row in csv.reader(single.splitlines(True))]

        log = folder + "/log"
        parts = [whole[at:at + 1000] for at in range(0, len(whole), 1000)]
        with distributed.LocalCluster(n_workers=2, threads_per_worker=1, dashboard_address=None) as cluster, \
                distributed.Client(cluster) as client:
            processes = client.run(os.getpid)
            futures = client.map(answered, parts, match=match, log=log)
            distributed.wait(futures[:2])
            time.sleep(0.1)
            busy = next(worker for worker, tasks in client.processing().items() if tasks)
            os.kill(processes[busy], signal.SIGKILL)
            rows = [row for part in client.gather(futures) for row in part]
        begun = len(open(log).readlines())
    assert begun > len(parts), "the worker was killed while it had nothing to do"
    assert rows == expected, "the rows differ from those of a single run"
    assert sum(row[8] != "" for row in rows) >= len(whole) // 50 * 2, "texts that fail have no rows of errors"

    assert rows_of(match([])) == [] and rows_of(match([whole[:0]])) == []

    def breaking():
        yield whole[:10]
        raise KeyError("of the engine")

    for faulty, fault in ((match([whole], entries="/none"), RuntimeError), (match(breaking()), KeyError)):
        try:
            list(faulty)
        except fault:
            continue
        raise AssertionError(f"no {fault.__name__}")
    print(f"{len(parts)} parts, begun {begun} times, give the {len(rows)} rows of a single run")


if __name__ == "__main__":
    main(*sys.argv[1:])
