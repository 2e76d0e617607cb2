"""The texts of pandas frames through near_text, for engines that hand a function the frames of a part."""
import csv
import io
import subprocess
import tempfile
import threading

import pandas

NUMBERS = ["percent", "distance", "limit", "index", "entry_line"]
COLUMNS = ["text", *NUMBERS, "entry", "error"]


def match(frames, entries, id_column, text_column, options=(), program="near_text"):
    """Gives frames of the id, as text, and COLUMNS, a row a match, in the order of the texts. A text without
    a match has a row without an entry, one that cannot be searched for a row with the error. `entries` is a
    file where this runs. Raises unless every text has its answer; frames given until then are not to be
    used. One process serves all frames."""
    command = [program, "match", "--part", "--texts", "-", "--text-column", "2", "--keep", "1",
               "--entries", entries, "--format", "csv", *options]
    faults = []
    with tempfile.TemporaryFile("w+", encoding="utf-8", errors="replace") as told, subprocess.Popen(
            command, stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=told) as process:
        def feed():
            try:
                # Half a surrogate pair becomes an error of its row.
                with io.TextIOWrapper(process.stdin, "utf-8", "surrogatepass", "") as texts:
                    for frame in frames:
                        frame[[id_column, text_column]].to_csv(
                            texts, header=False, index=False, quoting=csv.QUOTE_ALL)
            except BrokenPipeError:
                pass  # the process has ended, and its status tells why
            except BaseException as fault:
                faults.append(fault)
                process.kill()

        feeder = threading.Thread(target=feed)
        feeder.start()
        try:
            for rows in pandas.read_csv(
                    process.stdout, names=["line", *COLUMNS, id_column], chunksize=10000,
                    dtype={name: "Int64" if name in NUMBERS else str for name in [*COLUMNS, id_column]},
                    keep_default_na=False, na_values={name: [""] for name in NUMBERS}):
                yield rows[[id_column, *COLUMNS]].reset_index(drop=True)
        except pandas.errors.EmptyDataError:
            pass
        finally:
            process.stdout.close()  # ends the process too if nobody wants the rest
            feeder.join()
        if faults:
            raise faults[0]
        if process.wait() != 0:
            told.seek(0)
            raise RuntimeError(f"near_text ended with status {process.returncode}: {told.read()[-2000:]}")
