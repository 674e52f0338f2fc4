"""A display of its own with the program on it, for make_guide: keys and mouse in, pictures of windows out.

Everything is waited for by looking at the windows, so a slow machine only takes longer.
"""

import os
import re
import shutil
import signal
import subprocess
import sys
import time
import xml.etree.ElementTree

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
PATIENCE_SECONDS = 60
SCREEN = "1600x1000"
SCRATCH = "/tmp/pixelgrove-guide"  # may be seen in a picture
DATA_FOLDERS = ("Palettes", "UI", "Help")


class Failure(Exception):
    pass


def wait_for(what, condition):
    """The condition's value, once it is true."""
    end = time.monotonic() + PATIENCE_SECONDS
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise Failure("waited in vain for " + what)
        time.sleep(0.05)


def form_rects(name):
    """Where the controls of a Designer form are: left, top, width and height by object name."""
    tree = xml.etree.ElementTree.parse(os.path.join(ROOT, "src", "resources", name + ".ui"))
    rects = {}
    for widget in tree.iter("widget"):
        rect = widget.find("property[@name='geometry']/rect")
        if rect is not None:
            rects[widget.get("name")] = tuple(int(part.text) for part in rect)
    return rects


class Desktop:
    """The display, a folder for the program and its data, and what runs there."""

    def __init__(self):
        try:
            os.mkdir(SCRATCH, 0o700)
        except FileExistsError:
            raise Failure("%s is there: another run, or what is left of one" % SCRATCH) from None
        self.children = []
        self.log = open(os.path.join(SCRATCH, "log"), "w+", encoding="utf-8")

    def begin(self, programs):
        environment = {k: v for k, v in os.environ.items()
                       if k not in ("WAYLAND_DISPLAY", "XAUTHORITY", "QT_SCALE_FACTOR", "QT_STYLE_OVERRIDE")}
        for name in ("HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"):
            environment[name] = os.path.join(SCRATCH, name.lower())
            os.mkdir(environment[name], 0o700)
        # Nobody outside is asked for anything, and the pictures are the same on each graphics card.
        environment.update(QT_QPA_PLATFORM="xcb", LC_ALL="C.UTF-8", LIBGL_ALWAYS_SOFTWARE="1",
                           PIXELGROVE_SERVICE_URL="http://127.0.0.1:9",
                           PULSE_SERVER="unix:" + os.path.join(SCRATCH, "pulse.sock"),
                           DBUS_SESSION_BUS_ADDRESS="unix:path=" + os.path.join(SCRATCH, "no-bus"))
        self.environment = environment
        # The program keeps its data beside itself.
        self.program = shutil.copy(os.path.join(programs, "pixelgrove"), SCRATCH)
        data = os.path.join(ROOT, "data")
        for folder in DATA_FOLDERS:
            shutil.copytree(os.path.join(data, folder), os.path.join(SCRATCH, folder))
        self.copy_guide()
        shutil.copy(os.path.join(data, "Globals.XML"), SCRATCH)
        self.examples = os.path.join(SCRATCH, "ShaderToy", "Shaders", "Examples")
        shutil.copytree(os.path.join(data, "examples"), self.examples, ignore=shutil.ignore_patterns("src"))
        script = 'source "$0" && StartDisplay "$1" "$2" && echo "$DISPLAY" && read -r; StopDisplay'
        display = self.spawn(["bash", "-c", script, os.path.join(ROOT, "scripts", "virtual_display.sh"), SCREEN,
                              os.path.join(SCRATCH, "display.log")], stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        environment["DISPLAY"] = display.stdout.readline().decode().strip()
        if not environment["DISPLAY"]:
            raise Failure("there is no display")

    def spawn(self, command, **options):
        options = {"stdin": subprocess.DEVNULL, "stdout": self.log, **options}
        child = subprocess.Popen(command, cwd=SCRATCH, env=self.environment, stderr=self.log, **options)
        self.children.append(child)
        return child

    def end(self):
        for child in reversed(self.children):
            if child.stdin:
                child.stdin.close()  # the display's way to end
            else:
                child.terminate()
            try:
                child.wait(10)
            except subprocess.TimeoutExpired:
                child.kill()
                child.wait()
        self.log.close()
        shutil.rmtree(SCRATCH)

    def copy_guide(self):
        """As it is now: its pictures are what is being made."""
        shutil.copytree(os.path.join(ROOT, "docs", "guide"), os.path.join(SCRATCH, "Help", "Guide"), dirs_exist_ok=True)

    def ask(self, *command):
        return subprocess.run(command, env=self.environment, capture_output=True, text=True, check=False).stdout

    def start(self, *arguments, play=False):
        """The program, and its main window once it is there and rests."""
        self.environment["PIXELGROVE_AUTOPLAY"] = "1" if play else ""
        run = self.spawn([self.program, *arguments])
        return run, self.window("Pixelgrove$")

    def end_program(self, run):
        """Ends it without its settings being written, so that each part starts alike."""
        run.kill()
        run.wait()
        self.children.remove(run)
        for name in ("PixelgroveGlobals.XML", "Recovery"):
            path = os.path.join(SCRATCH, name)
            if os.path.isdir(path):
                shutil.rmtree(path)
            elif os.path.exists(path):
                os.remove(path)

    # Windows

    def windows(self, name):
        """Those that the manager knows under the name."""
        return [window for window in self.ask("xdotool", "search", "--onlyvisible", "--name", name).split()
                if "window state" in self.ask("xprop", "-id", window, "WM_STATE")]

    def window(self, name):
        """The window of the name, once it is there and rests."""
        window = wait_for("a window named " + name, lambda: self.windows(name))[0]
        self.rest(window)
        return window

    def popups(self):
        """Menus and lists that are open: windows that no manager knows. Left, top, width, height of each."""
        rects = []
        tree = self.ask("xwininfo", "-root", "-children")
        for window in re.findall(r"^\s+(0x[0-9a-f]+) ", tree, re.M):
            told = self.ask("xwininfo", "-id", window)
            rect = self.rect(window)
            if "IsViewable" in told and "Override Redirect State: yes" in told and rect and min(rect) >= 0 and rect[2] > 40:
                rects.append(rect)
        return rects

    def rect(self, window):
        """Left, top, width, height on the screen."""
        told = self.ask("xwininfo", "-id", window)
        numbers = [re.search(key + r":\s*(-?\d+)", told) for key in
                   ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")]
        return tuple(int(n.group(1)) for n in numbers) if all(numbers) else None

    def rest(self, window):
        seen = []

        def rests():
            seen.append(self.rect(window))
            return len(seen) >= 5 and seen[-1] and len(set(seen[-5:])) == 1
        wait_for("a window to rest", rests)

    def place(self, window, left, top, width=0, height=0):
        """Moves a window, and sizes it where a size is given."""
        if width:
            self.xdotool("windowsize", window, width, height)
        self.xdotool("windowmove", window, left, top)
        self.rest(window)

    def focus(self, window):
        self.xdotool("windowactivate", window)
        wait_for("the focus", lambda: self.ask("xdotool", "getactivewindow").strip() == window)

    # Keys and mouse

    def xdotool(self, *words):
        subprocess.run(["xdotool", *map(str, words)], env=self.environment, check=True, stdout=subprocess.DEVNULL)

    def key(self, *keys):
        self.xdotool("key", "--delay", 40, *keys)

    def type(self, text):
        self.xdotool("type", "--delay", 25, text)

    def click(self, window, x, y, button=1):
        """Relative to the window."""
        left, top, _, _ = self.rect(window)
        self.xdotool("mousemove", left + x, top + y, "click", button)

    def rest_mouse(self):
        """Where no button lights up under it."""
        self.xdotool("mousemove", 5, 995)

    # Pictures

    def shot(self, rect):
        """The part of the screen as it is, as bytes of a picture file; nothing waits for it."""
        left, top, width, height = rect
        command = ["import", "-silent", "-window", "root", "-crop", "%dx%d+%d+%d" % (width, height, left, top),
                   "+repage", "ppm:-"]
        return subprocess.run(command, env=self.environment, check=True, capture_output=True).stdout

    def shown(self, rect):
        """The part of the screen once it looks the same three times in a row."""
        seen = []

        def rests():
            seen.append(self.shot(rect))
            return len(seen) >= 3 and seen[-1] == seen[-2] == seen[-3]
        wait_for("a picture to rest", rests)
        return seen[-1]

    def save(self, name, picture, *drawing, colours=200):
        """A picture of these bytes, with no more colours than that where a number is given."""
        path = os.path.join(ROOT, "docs", "guide", "images", name + ".png")
        reduction = ["+dither", "-colors", str(colours)] if colours else []
        command = ["convert", "ppm:-", *drawing, *reduction, "-depth", "8", "-strip", "-define", "png:exclude-chunks=date,time",
                   ("png8:" if colours else "png24:") + path]
        subprocess.run(command, input=picture, check=True)
        print("docs/guide/images/%s.png: %d KB" % (name, os.path.getsize(path) // 1024))


def draw(programs, parts):
    """Lets each part, a function of a desktop, make its pictures."""
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
    desktop = Desktop()
    try:
        desktop.begin(programs)
        for part in parts:
            part(desktop)
    finally:
        desktop.end()
