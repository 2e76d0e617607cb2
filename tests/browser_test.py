"""The page of matches in a real browser. Usage: browser_test.py NEAR_TEXT SAMPLES [PICTURE]

With a picture's path it takes that for the README, and nothing else."""
import csv, io, json, os, random, subprocess, sys, tempfile, time, unittest

from selenium import webdriver
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common import utils
from selenium.webdriver.common.keys import Keys

PROGRAM, SAMPLES = (os.path.abspath(path) for path in sys.argv[1:3])
FOLDER = tempfile.TemporaryDirectory()
SAMPLE = ["--texts", "supplier.txt", "--entries", "catalogue.txt", "--prepare", "--percent", "60"]


def path(name):
    return os.path.join(FOLDER.name, name)


def write(name, text):
    with open(path(name), "w", encoding="utf-8", newline="") as file:
        file.write(text)
    return path(name)


def near_text(*arguments):
    done = subprocess.run([PROGRAM, *arguments], cwd=SAMPLES, capture_output=True, encoding="utf-8")
    if done.returncode > 1 or done.stderr:
        raise AssertionError(done.stderr)
    return done.stdout


class DriverService(Service):
    """By its address, since a bare system knows no localhost."""
    service_url = property(lambda self: f"http://127.0.0.1:{self.port}")

    def is_connectable(self):
        return utils.is_connectable(self.port, "127.0.0.1")


def browser(language="en-US", scheme=1, size="1280,1000"):
    options = webdriver.ChromeOptions()
    options.binary_location = "/usr/bin/chromium"
    for flag in ("headless", "no-sandbox", "disable-gpu", "disable-quic", "no-first-run", "hide-scrollbars",
                 "disable-background-networking", "disable-component-update", "disable-sync",
                 "disable-dev-shm-usage", "remote-debugging-pipe", "window-size=" + size, "lang=" + language,
                 f"blink-settings=preferredColorScheme={scheme}", "user-data-dir=" + tempfile.mkdtemp(dir=FOLDER.name)):
        options.add_argument("--" + flag)
    options.add_experimental_option("prefs", {"intl.accept_languages": language})
    options.set_capability("goog:loggingPrefs", {"browser": "ALL", "performance": "ALL"})
    driver = webdriver.Chrome(service=DriverService("/usr/bin/chromedriver"), options=options)
    driver.execute_cdp_cmd("Browser.setDownloadBehavior", {"behavior": "allow", "downloadPath": FOLDER.name})
    driver.implicitly_wait(30)
    driver.get("about:blank")  # the browser's own page asks for more and more
    return driver


class PageTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.driver = browser()

    @classmethod
    def tearDownClass(cls):
        cls.driver.quit()

    def setUp(self):
        self.driver.get_log("performance")  # of the browser's own page

    def open(self, page):
        self.driver.get("file://" + write("page.html", page))
        self.driver.find_element("css selector", "[data-ready]")

    def tearDown(self):
        self.assertEqual(self.driver.get_log("browser"), [])  # neither faults nor what the policy forbids
        for entry in self.driver.get_log("performance"):
            message = json.loads(entry["message"])["message"]
            if message["method"] == "Network.requestWillBeSent":
                self.assertRegex(message["params"]["request"]["url"], "^(file|blob|data):")

    def run_script(self, script, *arguments):
        return self.driver.execute_script(script, *arguments)

    def find(self, selector):
        return self.driver.find_element("css selector", selector)

    def press(self, keys):
        self.find("#list").send_keys(keys)

    def texts_of(self, selector):
        return self.run_script("return [...document.querySelectorAll(arguments[0])].map((e) => e.textContent)", selector)

    def until(self, value, wanted):
        end = time.monotonic() + 10
        while value() != wanted and time.monotonic() < end:
            time.sleep(0.02)
        self.assertEqual(value(), wanted)

    def saved(self):
        if os.path.exists(path("decisions.csv")):
            os.remove(path("decisions.csv"))
        self.find("#save").click()
        self.until(lambda: os.path.exists(path("decisions.csv")), True)
        with open(path("decisions.csv"), encoding="utf-8", newline="") as file:
            return file.read()

    def test_decisions_by_keys_are_kept_saved_and_fed_back(self):
        page = near_text("match", *SAMPLE, "--format", "html")
        self.open(page)
        pairs = [(row["line"], match["entry_line"], match["percent"])
                 for row in map(json.loads, near_text("match", *SAMPLE, "--format", "json").splitlines())
                 for match in sorted(row["matches"], key=lambda match: -match["percent"])]
        self.press("aarjaraarrkkr" + Keys.ARROW_DOWN + Keys.ENTER + Keys.ARROW_UP + "u" + "aar" + Keys.CONTROL + "z")
        self.press("araaarra")
        rows = list(csv.DictReader(io.StringIO(self.saved())))
        said = {(int(row["text_line"]), int(row["entry_line"])): row["decision"] for row in rows}
        self.assertEqual(len(rows), 19)
        self.assertEqual(list(rows[0]), ["text_line", "entry_line", "percent", "decision"])
        self.assertEqual({"accepted", "rejected"}, set(said.values()))
        for row in rows:
            self.assertIn((int(row["text_line"]), int(row["entry_line"]), int(row["percent"])), pairs)
        left = f"{len(pairs) - len(rows)} matches left to decide"
        self.assertEqual(self.find("#left").text, left)
        self.driver.refresh()
        self.find("[data-ready]")
        self.assertEqual(self.find("#left").text, left)
        self.assertEqual(list(csv.DictReader(io.StringIO(self.saved()))), rows)

        accepted = {pair for pair, decision in said.items() if decision == "accepted"}
        counts = next(csv.DictReader(io.StringIO(near_text(
            "sweep", *SAMPLE, "--all-columns", "--format", "csv", "--pairs", path("decisions.csv")))))
        self.assertEqual((counts["pairs"], counts["found"]), (str(len(accepted)), str(len(accepted))))
        second = [*SAMPLE, "--decisions", path("decisions.csv")]
        after = {(int(row["line"]), int(row["entry_line"])): row["decision"]
                 for row in csv.DictReader(io.StringIO(near_text("match", *second, "--format", "csv"))) if row["entry_line"]}
        self.assertEqual(set(after), {pair[:2] for pair in pairs} - (set(said) - accepted))
        self.assertEqual({pair for pair, decision in after.items() if decision}, accepted)
        self.open(near_text("match", *second, "--format", "html"))
        self.assertEqual(self.find("#left").text, left)

    def test_each_key_and_button_does_its_own(self):
        self.open(near_text("match", *SAMPLE[:-1], "61", "--format", "html"))  # of which nothing is decided yet
        current = "return document.querySelector('.current').id + document.querySelector('.current').className"
        steps = [("j", "m1match current"), ("k", "m0match current"), (Keys.ARROW_DOWN, "m1match current"),
                 ("a", "m2match current"), ("k", "m1match accepted current"), ("r", "m2match current"),
                 ("u", "m1match accepted current"), (Keys.CONTROL + "z" + Keys.NULL, "m1match current"),
                 (Keys.HOME, "m0match current")]
        steps += [("#" + name, after) for name, after in
                  [("next", "m1match current"), ("reject", "m2match current"), ("undo", "m1match current"),
                   ("accept", "m2match current"), ("previous", "m1match accepted current"),
                   ("m2 .no", "m2match rejected current"), ("m2 .no", "m2match current"), ("m0 .words", "m0match current")]]
        for what, after in steps:
            self.find(what).click() if what[0] == "#" else self.press(what)
            # What a class list holds in another order is the same.
            self.assertEqual(sorted(self.run_script(current).split()), sorted(after.split()), what)
            self.assertEqual(self.find("#list").get_attribute("aria-activedescendant"), after.split("match")[0])
        self.find("#m1 .yes").click()
        self.driver.switch_to.active_element.send_keys(Keys.ARROW_DOWN)
        self.assertEqual(self.find(".current").get_attribute("id"), "m2")
        # Keys count by their places, whatever alphabet is set.
        self.run_script("document.querySelector('#list').dispatchEvent("
                        "new KeyboardEvent('keydown', {code: 'KeyR', key: 'к', bubbles: true}))")
        self.assertEqual(self.texts_of(".rejected .said"), ["rejected"])

    def test_filters_and_ids(self):
        write("t.csv", 'id,name,price\n"a,""1",red ball,7\nb,red ball bowl,\nc,nothing here,\nd,' + "x" * 1001 + ",\n")
        write("e.csv", "code,name\nx1,ball red\nx2,red bowl\nx3,red ball\n")
        failing = subprocess.run(
            [PROGRAM, "match", "-t", path("t.csv"), "--text-column", "name", "--text-id", "id", "--keep", "price", "-e",
             path("e.csv"), "--entry-column", "name", "--entry-id", "code", "-p", "50", "-f", "html"],
            capture_output=True, encoding="utf-8")
        self.assertEqual(failing.returncode, 2)
        self.open(failing.stdout)
        everything = ["a,\"1", "b", "c", "d"]
        self.assertEqual(self.texts_of(".number"), everything)
        self.assertEqual(self.texts_of(".kept"), ["price: 7"])
        self.assertEqual(self.texts_of(".group:first-child .near"), ["100%", "100%", "83%"])
        self.press("r")
        cases = [("[value=several]", everything[:2], 6), ("[value=none]", ["c"], 0), ("[value=failed]", ["d"], 0),
                 ("[value=one]", [], 0), ("[value=all]", everything, 6), ("[value=open]", everything[:2], 5),
                 ("[value=rejected]", everything[:1], 1), ("[value=accepted]", [], 0), ("[value=any]", everything, 6)]
        for selector, names, matches in cases:
            self.run_script("document.querySelector(arguments[0]).click()", selector)
            self.until(lambda: self.texts_of(".number"), names)
            self.assertEqual(len(self.texts_of(".match[id^=m]")), matches, selector)
        for query, names, matches in [("BOWL", everything[:2], 4), ("noth", ["c"], 0), ("zz", [], 0), ("", everything, 6)]:
            self.find("#query").clear()
            self.find("#query").send_keys(query or "x" + Keys.BACKSPACE)
            self.until(lambda: (self.texts_of(".number"), len(self.texts_of(".match[id^=m]"))), (names, matches))
        self.run_script("low.value = 84; low.dispatchEvent(new Event('input'))")
        self.until(lambda: {near for near in self.texts_of(".near")} <= {f"{n}%" for n in range(84, 101)}, True)
        self.assertEqual(self.saved(), 'text_id,entry_id,percent,decision\n"a,""1",x1,100,rejected\n')

    def test_texts_are_nothing_but_text(self):
        hostile = ["</script><script>alert(1)</script> end", "<img src=x onerror=alert(2)> end", "<!--<script> end",
                   "a\u2028b\u2029c 'q' \"q\" \\u003cb> &lt; end", "\u202eright \u05d0\u05d1\u05d2 \u200f end", "w" * 995 + " end",
                   "e\u0301\U0001F600 end"]
        texts = write("hostile.txt", "\n".join(hostile) + "\n")
        self.open(near_text("match", "-t", texts, "-e", texts, "-p", "100", "-f", "html"))
        self.assertEqual(self.texts_of(".text .words"), hostile)
        self.assertEqual(self.texts_of(".match .words"), hostile)
        self.assertEqual(self.run_script("return document.querySelectorAll('#list :is(script, img, b)').length"), 0)
        self.assertTrue(self.run_script("return list.scrollWidth <= list.clientWidth"))
        script = "const s = document.createElement('script'); s.textContent = 'window.hit = 1'; document.body.append(s); "
        self.assertIsNone(self.run_script(script + "return window.hit"))
        self.assertIn("Content Security Policy", self.driver.get_log("browser")[0]["message"])

    def test_marks_and_other_commands(self):
        self.open(near_text("search", "The 16 oz clow hamer", "--entries", "catalogue.txt", "-p", "40", "-P", "-f", "html"))
        self.assertEqual(self.find("#title").text, "“The 16 oz clow hamer” in catalogue.txt")
        json_row = json.loads(near_text("search", "The 16 oz clow hamer", "--entries", "catalogue.txt", "-p", "40", "-P",
                                        "-f", "json", "--best"))
        self.press(Keys.HOME)
        edits = self.texts_of(".text :is(del, mark)") + self.texts_of(".group .match:first-of-type ins, #m0 ins")
        self.assertEqual(len("".join(edits).replace(" ", "")), json_row["matches"][0]["distance"])
        self.open(near_text("search", "\U0001F600a claw", "-e", write("m", "claw \U0001F600b\n"), "-p", "50", "-f", "html"))
        self.assertEqual(self.texts_of(".group mark"), ["a", "b"])
        self.open(near_text("duplicates", "catalogue.txt", "-p", "85", "-P", "-f", "html"))
        rows = near_text("duplicates", "catalogue.txt", "-p", "85", "-P", "-f", "csv").count("\n") - 1
        self.assertEqual(self.find("#left").text, f"{rows} matches left to decide")

    def test_a_cut_page_says_so(self):
        page = near_text("match", *SAMPLE, "--format", "html")
        self.open(page)
        self.assertFalse(self.find("#notice").is_displayed())
        self.open(page[:len(page) - 3000])
        self.assertIn("not complete", self.find("#notice").text)
        self.press("a")
        self.assertEqual(self.texts_of(".accepted .said"), ["accepted"])

    def test_a_large_page_opens_soon_and_draws_what_is_seen(self):
        random.seed(1)
        words = ["".join(random.choices("abcdefghiklmnoprstu", k=random.randint(4, 9))) for _ in range(3000)]
        texts = [random.sample(words, 5) for _ in range(20000)]
        write("many.txt", "\n".join(map(" ".join, texts)))
        write("entries.txt", "\n".join(" ".join(random.sample(text, 5)) + end for text in texts for end in ("", "s", " x")))
        arguments = ["match", "-t", path("many.txt"), "-e", path("entries.txt"), "-p", "90", "-f"]
        page, table = near_text(*arguments, "html"), near_text(*arguments, "csv")
        self.assertLess(len(page.encode()), 3 * len(table.encode()))
        self.open(page)
        self.assertEqual(self.find("#left").text, "60,000 matches left to decide")
        opened = self.run_script("return performance.timing.domContentLoadedEventEnd - performance.timing.navigationStart")
        self.assertLess(opened, 10000)
        drawn = 0
        for step in range(50):
            self.run_script("list.scrollTop = list.scrollHeight * arguments[0]", step / 50)
            self.until(lambda: self.run_script(
                "const box = list.getBoundingClientRect();"
                "return document.elementFromPoint(box.x + box.width / 2, box.y + box.height / 2).closest('.group') !== null"), True)
            drawn = max(drawn, self.run_script("return document.querySelectorAll('.match').length"))
        self.assertLess(drawn, 1000)
        self.press(Keys.END + "a")
        self.assertEqual(self.texts_of(".current .said"), ["accepted"])
        print(f"\n{len(page) / 1e6:.1f} MB, {len(page) / len(table):.2f} times the csv, open after {opened} ms")


class RussianTest(unittest.TestCase):
    def test_language_and_scheme_are_the_browser_s(self):
        driver = browser("ru-RU", 0)
        try:
            driver.get("file://" + write("ru.html", near_text("match", *SAMPLE, "--format", "html")))
            driver.find_element("css selector", "[data-ready]")
            self.assertEqual(driver.find_element("id", "left").text, "Осталось проверить: 284 совпадения")
            self.assertTrue(driver.execute_script("return getComputedStyle(document.body).color === 'rgb(236, 236, 238)'"))
        finally:
            driver.quit()


def take_picture(picture):
    driver = browser(size="1180,860")
    tables = ["--texts", "orders.csv", "--text-column", "item", "--text-id", "order",
              "--entries", "stock.csv", "--entry-column", "name", "--entry-id", "sku", "--prepare", "--percent", "60"]
    driver.get("file://" + write("picture.html", near_text("match", *tables, "--format", "html")))
    driver.find_element("css selector", "[data-ready]")
    driver.find_element("id", "list").send_keys("ararrrrr")  # as samples/decisions.csv
    driver.save_screenshot(picture)
    driver.quit()


if __name__ == "__main__":
    if len(sys.argv) > 3:
        take_picture(sys.argv[3])
    else:
        unittest.main(argv=sys.argv[:1], verbosity=2)
