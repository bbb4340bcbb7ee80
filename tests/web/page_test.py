"""Games as web pages, played in a browser: page_test.py ZEM VELDT SOURCE_FOLDER [WORD]. With a word, only the tests whose
names have it. Without a browser it ends with 77, which means that nothing was tested."""
import glob
import json
import os
import re
import subprocess
import sys
import tempfile
import traceback

from browser import Browser, Failure, find_browser

# What is out of sight need not be laid out yet, and has no text as it is seen until then.
READ = """(root => {
    const parts = [...root.querySelectorAll('.part')];
    for (const part of parts) part.style.contentVisibility = 'visible';
    const text = root.innerText;
    for (const part of parts) part.style.contentVisibility = '';
    return text;
})(%s)"""
STORY = READ % "document.getElementById('story')"
LINE = "document.getElementById('line').value"
FITS = "document.documentElement.scrollWidth <= window.innerWidth"


class Pages:
    """What all tests use: the programs, one browser, and the pages that were published."""

    def __init__(self, zem, veldt, source, folder):
        self.zem, self.veldt, self.source, self.folder = zem, veldt, source, folder
        self.browser = None
        self.made = {}

    def samples(self):
        return sorted(glob.glob(self.source + "/samples/*.kel"))

    def publish(self, game):
        if game not in self.made:
            page = "%s/%d.html" % (self.folder, len(self.made))
            subprocess.run([self.zem, "publish", game, page], check=True, capture_output=True)
            self.made[game] = page
        return self.made[game]

    def open(self, name, anew=True):
        """Opens a game, by default as somebody who was never there."""
        self.address = "file://" + self.publish(self.source + "/" + name)
        self.browser.open(self.address)
        if anew:
            self.browser.evaluate("(window.addEventListener = null, localStorage.clear())")
            self.browser.send("Page.navigate", url="about:blank")
            self.browser.open(self.address)
        self.settle()

    def settle(self):
        """Waits until the game has said all that it has to say, pauses included."""
        self.browser.wait_for("document.getElementById('prompt').textContent !== '...'")

    def enter(self, line):
        self.browser.enter(line)
        self.settle()

    def story(self):
        return self.browser.evaluate(STORY)

    def expect(self, *texts, script=STORY):
        told = self.browser.evaluate(script)
        for text in texts:
            if text not in told:
                raise Failure("%r is not in %r" % (text, told[-400:]))

    def expect_not(self, text):
        if text in self.story():
            raise Failure("%r is in the story" % text)

    def expect_true(self, script):
        if self.browser.evaluate(script) is not True:
            raise Failure("not true: " + script)


def split_runs(path):
    """Name, seed and lines of input of the runs in a file."""
    runs, current = [], None
    for line in open(path, encoding="utf-8"):
        head = re.match(r"run (.*) seed (\d+)$", line.rstrip("\n"))
        if head:
            current = (head[1], int(head[2]), [])
            runs.append(current)
        elif current and line[0] in "><@":
            current[2].append(line)
    return runs


def test_same_transcripts(pages):
    """The player of the page tells every recorded run as the program does, and what the walker plays, too."""
    pages.browser.open("file://" + pages.publish(pages.source + "/samples/gatehouse.kel"))
    pages.browser.evaluate("""(async () => {
        const unpack = async text => new Uint8Array(await new Response(new Blob([Uint8Array.from(atob(text), c => c.charCodeAt(0))])
            .stream().pipeThrough(new DecompressionStream('gzip'))).arrayBuffer());
        const wasm = await unpack(document.getElementById('player').textContent);
        window.tell = async (game, seed, input) => {
            const player = (await WebAssembly.instantiate(wasm, { page: { Fault() { throw new Error('fault'); } },
                wasi_snapshot_preview1: new Proxy({}, { get: () => () => 0 }) })).instance.exports;
            player._initialize?.();
            const put = bytes => { const at = player.Space(bytes.length); new Uint8Array(player.memory.buffer).set(bytes, at); };
            const memory = () => new Uint8Array(player.memory.buffer, player.Result(), player.Length());
            put(await unpack(game));
            player.Load();
            put(new TextEncoder().encode(input));
            player.PlayLines(seed);
            return new TextDecoder().decode(memory());
        };
    })()""")
    games = [(game, game + ".tests") for game in pages.samples()]
    games += [(runs[:-len(".tests")], runs) for runs in sorted(glob.glob(pages.source + "/tests/data/play/*.tests"))]
    for name in ("lighthouse", "archipelago"):
        walked = pages.folder + "/" + name + ".tests"
        game = pages.source + "/samples/" + name + ".kel"
        subprocess.run([pages.zem, "walk", game, "--turns", "3000", "--seed", "3", "--runs", walked], capture_output=True)
        games.append((game, walked))
    count = 0
    for game, runs in games:
        page = open(pages.publish(game), encoding="utf-8").read()
        packed = re.search(r'id="game">([^<]*)<', page)[1]
        for name, seed, lines in split_runs(runs):
            lines_file = pages.folder + "/lines"
            with open(lines_file, "w", encoding="utf-8") as file:
                file.writelines(lines)
            native = subprocess.run([pages.veldt, "--text", game, "--seed", str(seed), "--lines", lines_file],
                                    capture_output=True).stdout.decode()
            told = pages.browser.evaluate("tell(%s, %d, %s)" % (json.dumps(packed), seed, json.dumps("".join(lines))))
            count += len(lines)
            if told != native:
                at = next((k for k, (a, b) in enumerate(zip(told, native)) if a != b), min(len(told), len(native)))
                raise Failure("%s, run %s: the page tells %r and the program %r" %
                              (game, name, told[at - 20:at + 60], native[at - 20:at + 60]))
    if count < 500:
        raise Failure("only %d lines were played" % count)
    print("  %d lines of input, each told the same" % count)


def test_whole_game(pages):
    """Lighthouse from start to end, typed into the page."""
    pages.open("samples/lighthouse.kel")
    for line in split_runs(pages.source + "/samples/lighthouse.kel.tests")[0][2]:
        pages.enter(line[1:].strip())
    recorded = open(pages.source + "/samples/lighthouse.kel.tests", encoding="utf-8").read()
    last = [line.strip() for line in recorded.split("\nrun ")[0].strip().split("\n") if line.startswith("  ")][-1]
    pages.expect(last)
    fetched = set(pages.browser.requests) - {pages.address}
    if fetched:
        raise Failure("fetched: " + str(fetched))


def test_turns(pages):
    """Undo, reload, an open question, and going on after it."""
    pages.open("samples/gatehouse.kel")
    start = pages.story()
    for line in ("look", "inventory"):
        pages.enter(line)
    pages.expect("> look", "> inventory")
    before = pages.story()
    pages.browser.reload()
    pages.settle()
    if pages.story() != before:
        raise Failure("after a reload the story is another: %r" % pages.story())
    pages.browser.click("#undo")
    pages.browser.click("#undo")
    pages.expect("Taken back.")
    pages.expect_true("document.getElementById('undo').disabled")
    pages.browser.click("#restart")
    pages.expect(start.strip()[-40:])
    pages.expect_true("!document.getElementById('undo').disabled")
    pages.open("tests/data/play/scripts.kel")
    pages.enter("ask")
    pages.expect("Yes or no?", script="document.getElementById('prompt').textContent")
    pages.browser.reload()
    pages.enter("perhaps")
    pages.expect("Please answer yes or no.")
    pages.browser.click("#ways button")
    pages.expect("yes and a")
    pages.browser.click("#undo")
    pages.enter("ask")
    pages.browser.click("#undo")
    pages.expect("What do you do?", script="document.getElementById('prompt').textContent")


def test_saved_games(pages):
    """Saved in the browser and as a file; restored, also after a reload; a file that is none is refused."""
    pages.open("samples/lighthouse.kel")
    room = "document.querySelector('#ways').innerText"
    pages.enter("e")
    pages.browser.click("#save")
    pages.browser.evaluate("document.getElementById('saveName').value = ''")
    pages.browser.click("#saveName")
    pages.browser.enter("at <b>Bréhat</b>'s")
    pages.expect("Saved.")
    pages.enter("w")
    pages.expect("crab pots", script=room)
    pages.browser.reload()
    pages.browser.click("#restore")
    pages.expect("at <b>Bréhat</b>'s", script="document.getElementById('saveList').innerText")
    pages.browser.click("#saveList button")
    pages.expect("register", script=room)
    pages.browser.send("Browser.setDownloadBehavior", behavior="allow", downloadPath=pages.folder)
    pages.enter("save")
    pages.browser.click("#toFile")
    file = pages.folder + "/The Lamp at Kerlvan.kelsave"
    for _ in range(200):
        if os.path.exists(file):
            break
        pages.browser.evaluate("new Promise(done => setTimeout(done, 50))")
    with open(pages.folder + "/bad.kelsave", "wb") as bad:
        bad.write(open(file, "rb").read().replace(b"here", b"where"))
    pages.enter("w")
    for name, told, things in ((pages.folder + "/bad.kelsave", "That game could not be opened.", "crab pots"),
                               (file, "Restored.", "register")):
        pages.enter("restore")
        root = pages.browser.send("DOM.getDocument")["root"]["nodeId"]
        node = pages.browser.send("DOM.querySelector", nodeId=root, selector="#file")["nodeId"]
        pages.browser.send("DOM.setFileInputFiles", files=[name], nodeId=node)
        pages.browser.wait_for("!document.getElementById('saves').open && %s.includes(%s)" % (STORY, json.dumps(told)))
        pages.expect(things, script=room)
    pages.enter("restore")
    pages.browser.key("Escape")
    pages.expect_true("!document.getElementById('saves').open")
    pages.expect("register", script=room)
    # What is kept may have been written by anybody.
    for state in ("nonsense", '"x"', '{"seed":1,"calls":[["v","@"]],"entries":[]}', '{"seed":1,"calls":[[1]],"entries":[]}',
                  '{"seed":1,"calls":[],"entries":[{"kind":"text","text":5}]}'):
        pages.browser.evaluate("(() => { const set = localStorage.setItem.bind(localStorage); const key = Object.keys(localStorage)"
                               ".find(k => k.includes('state')); Storage.prototype.setItem = () => {}; set(key, %s); })()" % json.dumps(state))
        pages.browser.reload()
        pages.settle()
        pages.expect("standing on the Quay")


def test_keyboard(pages):
    """Without a mouse: history, completion, focus, choices."""
    pages.open("samples/lighthouse.kel")
    pages.browser.letters("x crab pots")
    pages.browser.key("Enter")
    pages.browser.letters("inv")
    pages.expect_true(LINE + " === 'inventory'")
    pages.browser.key("Tab")
    pages.expect_true(LINE + " === 'inventory '")
    pages.browser.key("Enter")
    pages.expect("> inventory")
    pages.browser.letters("ina")  # what is typed on replaces what was offered
    pages.expect_true(LINE + " === 'ina'")
    pages.browser.key("ArrowUp")
    pages.browser.key("ArrowUp")
    pages.expect_true(LINE + " === 'x crab pots'")
    pages.browser.key("ArrowDown")
    pages.browser.key("ArrowDown")
    pages.expect_true(LINE + " === 'ina'")
    seen = set()
    for _ in range(40):
        pages.browser.key("Tab")
        seen.add(pages.browser.evaluate("document.activeElement.id || document.activeElement.textContent"))
    missing = {"undo", "save", "restore", "restart", "smaller", "larger", "colours", "line", "north", "Yann", "silver watch"} - seen
    if missing:
        raise Failure("the Tab key does not come to " + str(missing))
    pages.open("tests/data/web/hostile.kel")
    pages.enter("choose")
    pages.browser.evaluate("document.querySelectorAll('button.choice')[1].focus()")
    pages.browser.key("Enter")
    pages.expect("Two.")
    pages.expect_true("document.querySelectorAll('button.choice').length === 0")
    pages.browser.evaluate("document.getElementById('line').focus()")
    pages.browser.enter("key")
    pages.browser.letters("x")
    pages.browser.letters("x")  # ends the pause
    pages.expect("Pressed.")
    pages.expect_true(LINE + " === ''")


def test_hostile_game(pages):
    """What looks like markup is text, whatever it stands in; and every turn ends."""
    pages.open("tests/data/web/hostile.kel")
    pages.expect("Night </title <script x=\" & 'y' @SCRIPT@", script="document.title")
    pages.expect("by \"'/ <img src=x onerror=window.ran=1 /", script="document.querySelector('header').innerText")
    pages.enter("tags")
    pages.expect("<script>window.ran=1</script><img src=x onerror=window.ran=1>", "&lt;b&gt;", "</script><iframe", "@GAME@ @FILES@")
    pages.enter("say <img src=x onerror=window.ran=1> \u2603 é")
    pages.expect("You say: <img src=x onerror=window.ran=1> ? é")
    for line in ("endless", "flood", "grow"):
        pages.enter(line)
        pages.expect("goes round in circles")
        pages.browser.click("#undo")
    pages.enter("go to <i Cellar")
    pages.expect("A cellar.")
    pages.enter("out")
    pages.browser.click("#ways nav:nth-of-type(2) button")
    pages.expect("Nothing.")
    pages.enter("look at it all")
    pages.expect_true("document.querySelector('#story img').naturalWidth === 8 && document.querySelector('#story img').alt.endsWith('é.png')")
    pages.enter("colours")
    pages.browser.reload()
    pages.expect_true("document.querySelectorAll('script').length === 4 && document.querySelectorAll('img, iframe, a').length === 1")
    pages.expect_true("typeof window.ran === 'undefined'")
    complaints = list(pages.browser.complaints)
    ran = pages.browser.evaluate("""(async () => { const s = document.createElement('script'); s.textContent = 'window.ran = 1';
        document.body.append(s); document.body.insertAdjacentHTML('beforeend', '<p style="color:red" onclick="window.ran = 1" id="p">x</p>');
        document.getElementById('p').click(); await fetch('data:,x').then(() => window.ran = 1, () => {});
        return [typeof window.ran, document.getElementById('p').style.color]; })()""")
    pages.browser.complaints = complaints  # the policy complains of this, as it should
    if ran != ["undefined", ""]:
        raise Failure("the policy let something run: " + str(ran))


def test_look(pages):
    """Narrow pages, large letters, light and dark."""
    browser = pages.browser
    pages.open("tests/data/web/hostile.kel")
    pages.enter("colours")
    contrast = """(() => { const part = c => { c /= 255; return c <= 0.03928 ? c / 12.92 : ((c + 0.055) / 1.055) ** 2.4; };
        const light = text => { const [r, g, b] = text.match(/[0-9]+/g).map(Number); return 0.2126 * part(r) + 0.7152 * part(g) + 0.0722 * part(b); };
        const of = name => { const p = document.createElement('p'); p.className = name; p.textContent = 'x'; document.getElementById('story').append(p); const c = getComputedStyle(p).color; p.remove(); return c; };
        const ground = light(getComputedStyle(document.documentElement).backgroundColor);
        return ['', 'typed', 'note', 'fault', 'red', 'orange', 'brown', 'yellow', 'green', 'cyan', 'blue', 'purple', 'pink', 'grey'].filter(name => {
            const one = light(of(name)); return (Math.max(one, ground) + 0.05) / (Math.min(one, ground) + 0.05) < 4.5; }); })()"""
    for dark in (False, True):
        browser.set_dark(dark)
        if browser.evaluate(contrast):
            raise Failure("hard to read: " + str(browser.evaluate(contrast)))
    ground = "getComputedStyle(document.documentElement).backgroundColor"
    before = browser.evaluate(ground)
    browser.click("#colours")
    pages.expect_true("%s !== %s" % (ground, json.dumps(before)))
    for _ in range(30):
        browser.click("#larger")
    pages.expect_true("getComputedStyle(document.getElementById('story')).fontSize === '48px'")
    browser.reload()
    pages.expect_true("getComputedStyle(document.getElementById('story')).fontSize === '48px' && %s !== %s" % (ground, json.dumps(before)))
    pages.expect_true(FITS)
    # A narrow screen, one at 400 per cent, and letters as large as can be on it.
    for width, height, clicks in ((320, 640, 15), (320, 256, 0), (320, 256, -15)):
        browser.resize(width, height)
        for _ in range(abs(clicks)):
            browser.click("#smaller" if clicks > 0 else "#larger")
        browser.click("#save")
        pages.expect_true(FITS)
        pages.expect_true("document.getElementById('saves').getBoundingClientRect().right <= window.innerWidth")
        browser.click("#closeSaves")
        pages.enter("look")
        browser.click("#line")
        pages.expect_true("(b => b.top >= 0 && b.bottom <= window.innerHeight && b.right <= window.innerWidth)(document.getElementById('line').getBoundingClientRect())")
    browser.resize(1000, 760)
    browser.set_dark(False)


def test_lacking_browsers(pages):
    """A browser that lacks something says so; one that keeps nothing is played in all the same."""
    browser = pages.browser
    for script, until, told in (
            ("delete window.DecompressionStream", "document.getElementById('notice').textContent.includes('lacks')",
             "lacks DecompressionStream"),
            ("delete window.WebAssembly", "document.getElementById('notice').textContent.includes('lacks')", "lacks WebAssembly"),
            ("Object.defineProperty(window, 'localStorage', { get() { throw new Error(); } })",
             "document.documentElement.dataset.ready", "keeps nothing for this page")):
        identifier = browser.send("Page.addScriptToEvaluateOnNewDocument", source=script)["identifier"]
        browser.open("file://" + pages.publish(pages.source + "/samples/gatehouse.kel"), until)
        pages.expect(told, script=READ % "document.querySelector('main')")
        browser.send("Page.removeScriptToEvaluateOnNewDocument", identifier=identifier)
    browser.send("Emulation.setScriptExecutionDisabled", value=True)
    browser.open("file://" + pages.publish(pages.source + "/samples/gatehouse.kel"),
                 "document.getElementById('notice').innerText.includes('needs JavaScript')")
    browser.send("Emulation.setScriptExecutionDisabled", value=False)


def test_sizes(pages):
    """What the page costs, without the game and with it."""
    page = os.path.getsize(pages.publish(pages.source + "/samples/gatehouse.kel"))
    text = open(pages.publish(pages.source + "/samples/gatehouse.kel"), encoding="utf-8").read()
    game = len(re.search(r'id="game">([^<]*)<', text)[1])
    lighthouse = os.path.getsize(pages.publish(pages.source + "/samples/lighthouse.kel"))
    print("  the player's share: %d bytes; lighthouse: %d bytes" % (page - game, lighthouse))
    if page - game > 256 * 1024 or lighthouse > 300 * 1024:
        raise Failure("too large")


def main(arguments):
    zem, veldt, source = map(os.path.abspath, arguments[:3])
    program = find_browser()
    if not program:
        print("There is no Chromium, so no page is tried.")
        return 77
    failed = []
    with tempfile.TemporaryDirectory(prefix="zem-pages-") as folder:
        pages = Pages(zem, veldt, source, folder)
        pages.browser = Browser(program)
        try:
            for name, test in list(globals().items()):
                if not name.startswith("test_") or not all(word in name for word in arguments[3:]):
                    continue
                print(name, flush=True)
                try:
                    pages.browser.complaints = []
                    pages.browser.requests = []
                    test(pages)
                    if pages.browser.complaints:
                        raise Failure("the browser complains: " + str(pages.browser.complaints))
                except (Failure, subprocess.CalledProcessError, OSError) as failure:
                    print("  FAILED: " + "".join(traceback.format_exception_only(failure)).strip())
                    traceback.print_tb(failure.__traceback__)
                    failed.append(name)
        finally:
            pages.browser.close()
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
