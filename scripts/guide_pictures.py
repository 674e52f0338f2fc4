"""The pictures of the guide: what each window is brought to show, and where it is cut out. For make_guide."""

import hashlib
import json
import math
import os
import struct
import wave

from guide_desktop import ROOT, SCRATCH, form_rects, wait_for

# The main window at the size where its form has the places of its file.
BORDER, CLIENT_TOP = 5, 52
MAIN_FORM = form_rects("EditWindow")
MAIN_SIZE = (760 + 2 * BORDER, 870 + CLIENT_TOP + BORDER)
MAIN_LEFT, MAIN_TOP = 820, 10
DIALOG_TOP = 30  # they have no menu bar
OUTPUT, BROWSER = "Shader Output", "Browse Shaders"
RECORDING_FOLDER = "/home/user/Videos/waves"


def at(name, *, form=None, margin=0):
    """The place of a control in the main window's picture: left, top, width, height."""
    left, top, width, height = (form or MAIN_FORM)[name]
    return (left + BORDER - margin, top + CLIENT_TOP - margin, width + 2 * margin, height + 2 * margin)


def part_of(window_rect, rect):
    return (window_rect[0] + rect[0], window_rect[1] + rect[1], rect[2], rect[3])


def union(*rects):
    left, top = min(r[0] for r in rects), min(r[1] for r in rects)
    return (left, top, max(r[0] + r[2] for r in rects) - left, max(r[1] + r[3] for r in rects) - top)


def numbers(*places):
    """What draws a numbered disc at each place of a picture."""
    drawing = ["-pointsize", "15", "-gravity", "NorthWest"]
    for number, (x, y) in enumerate(places, 1):
        drawing += ["-fill", "#c02828", "-stroke", "white", "-strokewidth", "1.5",
                    "-draw", "circle %d,%d %d,%d" % (x, y, x + 11, y),
                    "-fill", "white", "-stroke", "none", "-annotate", "+%d+%d" % (x - 5, y - 9), str(number)]
    return drawing


def open_main(desktop, *arguments, play=False, output=(480, 360)):
    """The program with its main window at the right and the output at the left, at their places for pictures."""
    run, main = desktop.start(*arguments, play=play)
    out = desktop.window(OUTPUT)
    desktop.focus(desktop.window(BROWSER))
    desktop.key("alt+F4")
    wait_for("the browser to close", lambda: not desktop.windows(BROWSER))
    desktop.place(out, 10, 10, *output)
    desktop.place(main, MAIN_LEFT, MAIN_TOP, *MAIN_SIZE)
    desktop.focus(main)
    return run, main, out


def example(desktop, name):
    return os.path.join(desktop.examples, name + ".json")


def await_frames(desktop, rect, count=8):
    """Until the part of the screen has shown some frames of a running shader."""
    seen = set()

    def runs():
        seen.add(hashlib.sha1(desktop.shot(rect)).digest())
        return len(seen) > count
    wait_for("a shader to run", runs)


def menu_entry(desktop, letter, *keys):
    """An entry of the menu of that letter: the way from its first one by keys, and Enter."""
    desktop.key("alt+" + letter)
    wait_for("a menu", desktop.popups)
    desktop.key(*keys, "Return")


def main_part(desktop, main, name, top=0, bottom=None):
    """The part of the main window with a control, from one height of it to another where some are given."""
    left, y, width, height = at(name, margin=4)
    return part_of(desktop.rect(main), (left, y + top, width, (bottom or height) - top))


def workbench(desktop):
    run, main, out = open_main(desktop, example(desktop, "nebula"), play=True, output=(640, 700))
    desktop.place(main, 654, 10, MAIN_SIZE[0], 700)
    await_frames(desktop, desktop.rect(out), 25)
    desktop.save("workbench", desktop.shot(union(desktop.rect(out), desktop.rect(main))), colours=None)
    desktop.end_program(run)


def main_window(desktop):
    run, main, out = open_main(desktop, example(desktop, "ink"), play=True)
    await_frames(desktop, desktop.rect(out))
    show_tree(desktop, main)
    desktop.key("Down", "Down", "Down", "Down", "Down")
    names = ("playbackGroup", "timeGroup", "fpsGroup", "stageButtons", "editorSplitter")
    places = [(at(name)[0] + at(name)[2] - 16, at(name)[1] + 12) for name in names]
    places[3] = (places[3][0], places[3][1] + 2)
    places[4] = (places[4][0] - 12, places[4][1] + 6)
    left, top, width, height = at("editorSplitter")
    places += [(left + width // 2 - 24, top + height - 20), (left + width - 28, top + TREE_TOP + 22),
               (left + width - 14, top + height - 96)]
    left, top, width, _ = at("channelButton3")
    places += [(left + width - 10, top + 60), (at("caretStatusText")[0] + 56, at("caretStatusText")[1] + 11)]
    desktop.save("main", desktop.shot(desktop.rect(main)), *numbers(*places))
    desktop.end_program(run)


# Where the bar between editor and messages is in a new main window, and where it is dragged to.
BAR_Y, TREE_TOP = 369, 290


def show_tree(desktop, main):
    """More room for messages and tree, and the keyboard to the tree."""
    left, top, width, _ = part_of(desktop.rect(main), at("editorSplitter"))
    x = left + width // 4
    desktop.xdotool("mousemove", x, top + BAR_Y, "mousedown", 1)
    for y in range(BAR_Y, TREE_TOP, -4):
        desktop.xdotool("mousemove", x, top + y)
    desktop.xdotool("mousemove", x, top + TREE_TOP, "mouseup", 1)
    desktop.rest_mouse()
    desktop.key("F6", "F6")


COSINE = (292, 137)  # the word cos, from the corner of the editor, below the line that is written there


def editor(desktop):
    """Completion, the help of a word, and the editor's own menu, in a project that is begun anew."""
    run, main, _ = open_main(desktop)
    begin_line(desktop, 4)
    desktop.type("float edge = smo")
    text = main_part(desktop, main, "editorSplitter", bottom=240)
    desktop.save("completion", desktop.shown(text))
    desktop.key("Escape")
    wait_for("the list to close", lambda: not desktop.popups())
    desktop.xdotool("mousemove", text[0] + COSINE[0], text[1] + COSINE[1])
    wait_for("a tool tip", desktop.popups)
    desktop.save("word_help", desktop.shown(union(text, *desktop.popups())))
    desktop.rest_mouse()
    desktop.key("Menu")
    wait_for("the editor's menu", desktop.popups)
    desktop.save("editor_menu", desktop.shown(union(text, *desktop.popups())))
    # Create Control is the last but one.
    desktop.key("Up", "Up", "Return")
    dialog = desktop.window("Control Generator")
    fill(desktop, dialog, "ControlDialog", nameEdit="Glow", parentEdit="lamp", descriptionEdit="strength",
         minimumEdit="0.0", maximumEdit="2.0", defaultEdit="1.0")
    desktop.save("generator", desktop.shown(desktop.rect(dialog)))
    desktop.end_program(run)


def begin_line(desktop, number):
    """An empty line below that one, by the dialog for going there."""
    desktop.key("ctrl+g")
    desktop.window("Go to Line")
    desktop.type(str(number))
    desktop.key("Return", "End", "Return")


def fill(desktop, dialog, form, **texts):
    """Types texts into fields of a dialog, which has the size of its form."""
    rects = form_rects(form)
    for name, text in texts.items():
        left, top, width, height = rects[name]
        desktop.click(dialog, BORDER + left + width - 12, DIALOG_TOP + top + height // 2)
        desktop.key("ctrl+a")
        desktop.type(text)
    desktop.rest_mouse()


def errors(desktop):
    run, main, _ = open_main(desktop)
    begin_line(desktop, 4)
    desktop.type("float edge = smothstep(0.0, 1.0, uv.x);")
    buttons = part_of(desktop.rect(main), at("stageButtons"))
    before = desktop.shown(buttons)
    desktop.key("F5")
    wait_for("the stage to turn red", lambda: desktop.shot(buttons) != before)
    picture = union(main_part(desktop, main, "stageButtons"), main_part(desktop, main, "editorSplitter"))
    desktop.save("errors", desktop.shown(picture))
    desktop.key("ctrl+f")
    find = desktop.window("Find")
    desktop.place(find, 100, 500)
    desktop.type("smothstep")
    desktop.save("find", desktop.shown(desktop.rect(find)))
    desktop.key("Escape")
    desktop.key("ctrl+h")
    replace = desktop.window("Replace")
    desktop.place(replace, 100, 500)
    fill(desktop, replace, "ReplaceDialog", findEdit="smothstep", replaceEdit="smoothstep")
    desktop.save("replace", desktop.shown(desktop.rect(replace)))
    desktop.end_program(run)


def output(desktop):
    run, main, out = open_main(desktop, example(desktop, "golden_seams"), play=True, output=(640, 420))
    await_frames(desktop, desktop.rect(out))
    desktop.focus(out)
    desktop.click(out, 140, 90, 3)
    wait_for("the output's menu", desktop.popups)
    desktop.key("Down", "Down", "Right")
    wait_for("the menu of recording", lambda: len(desktop.popups()) == 2)
    desktop.save("output", desktop.shot(union(desktop.rect(out), *desktop.popups())), colours=None)
    desktop.end_program(run)


def channels(desktop):
    run, main, out = open_main(desktop, example(desktop, "nebula"), play=True, output=(320, 220))
    await_frames(desktop, desktop.rect(out))
    desktop.key("ctrl+shift+Tab")
    left, top, width, height = at("channelButton2")
    desktop.click(main, left + width // 2, top + height // 2)
    wait_for("the channel's menu", desktop.popups)
    desktop.key("Down", "Right")
    wait_for("the channel's menu of stages", lambda: len(desktop.popups()) == 2)
    desktop.rest_mouse()
    strip = part_of(desktop.rect(main), union(at("channelThumbnail0", margin=4), at("channelThumbnail3", margin=4),
                                              at("channelButton3", margin=4), at("wrapCombo0", margin=4)))
    desktop.save("channels", desktop.shot(union(strip, *desktop.popups())))
    desktop.end_program(run)


def controls(desktop):
    run, main, out = open_main(desktop, example(desktop, "ink"), play=True)
    await_frames(desktop, desktop.rect(out))
    show_tree(desktop, main)
    desktop.key("Down", "Down", "Down", "Down", "Down", "Tab", "s")
    left, top, width, height = main_part(desktop, main, "editorSplitter", top=TREE_TOP)
    desktop.save("controls", desktop.shot((left + width // 2, top + 4, width // 2, height - 4)))
    desktop.end_program(run)


def recording(desktop):
    run, main, _ = open_main(desktop)
    menu_entry(desktop, "w", "Down", "Down", "Down")
    dialog = desktop.window("Recording")
    desktop.place(dialog, 60, 100)
    press(desktop, dialog, "RecordingDialog", "framesRadio")
    fill(desktop, dialog, "RecordingDialog", folderEdit=RECORDING_FOLDER, formatEdit="waves-%04d.png")
    press(desktop, dialog, "RecordingDialog", "demoButton")
    desktop.save("recording", desktop.shown(desktop.rect(dialog)))
    press(desktop, dialog, "RecordingDialog", "thirdPartyRadio")
    press(desktop, dialog, "RecordingDialog", "newButton")
    combos = desktop.window("Add 3rd party")
    fill(desktop, combos, "KeyComboDialog", nameEdit="Screen recorder", startEdit="Alt+F9", stopEdit="Alt+F10")
    desktop.save("key_combos", desktop.shown(desktop.rect(combos)))
    desktop.end_program(run)


def press(desktop, dialog, form, name):
    left, top, width, height = form_rects(form)[name]
    desktop.click(dialog, BORDER + left + min(width // 2, 60), DIALOG_TOP + top + height // 2)
    desktop.rest_mouse()


def palettes(desktop):
    run, _, _ = open_main(desktop)
    menu_entry(desktop, "f", "Up", "Up")
    dialog = desktop.window("Palette Browser")
    desktop.click(dialog, 60, 160)
    desktop.rest_mouse()
    desktop.save("palettes", desktop.shown(desktop.rect(dialog)))
    desktop.end_program(run)


def library(desktop):
    """The examples as an export file: the choice among them, and the browser once they are imported."""
    path = os.path.join(SCRATCH, "shaders.json")
    with open(path, "w", encoding="utf-8") as file:
        json.dump({"shaders": [exported(desktop, name) for name in example_names()]}, file)
    run, main = desktop.start(path)
    choice = desktop.window("Choose a Shader")
    desktop.key("Tab", "Down")
    desktop.save("choice", desktop.shown(desktop.rect(choice)))
    left, top, width, height = form_rects("ShaderChoice")["hint"]
    hint = part_of(desktop.rect(choice), (BORDER + left, DIALOG_TOP + top, width, height))
    before = desktop.shown(hint)
    press(desktop, choice, "ShaderChoice", "importButton")
    wait_for("the import", lambda: desktop.shown(hint) != before)
    desktop.key("Escape")
    wait_for("the choice to close", lambda: not desktop.windows("Choose a Shader"))
    browser = desktop.window(BROWSER)
    desktop.place(browser, 20, 300, 758 + 2 * BORDER, 396 + CLIENT_TOP + BORDER)
    desktop.focus(browser)
    left, top, _, height = form_rects("ShadertoyBrowse")["offlineCheck"]
    desktop.click(browser, BORDER + left + 8, CLIENT_TOP + top + height // 2)
    left, top, _, height = form_rects("ShadertoyBrowse")["searchCombo"]
    desktop.click(browser, BORDER + left + 60, CLIENT_TOP + top + height // 2)
    desktop.rest_mouse()
    desktop.type("buffer mouse")
    rows = part_of(desktop.rect(browser), at("resultList", form=form_rects("ShadertoyBrowse")))
    before = desktop.shown(rows)
    desktop.key("Return")
    wait_for("results", lambda: desktop.shot(rows) != before)
    desktop.place(browser, 20, 300, 796, 400)
    desktop.save("browser", desktop.shown(desktop.rect(browser)))
    desktop.end_program(run)


def example_names():
    return sorted(name[:-5] for name in os.listdir(os.path.join(ROOT, "data", "examples")) if name.endswith(".json"))


def exported(desktop, name):
    """A project as a service has it, under an id of the service's form."""
    with open(example(desktop, name), encoding="utf-8") as file:
        project = json.load(file)["Shader"]
    digest = hashlib.sha1(name.encode()).digest()
    letters = "abcdefghjkmnpqrstuvwxyzABCDEFGHJKLMNPQRSTUVWXYZ23456789"
    project["info"]["id"] = "".join(letters[byte % len(letters)] for byte in digest[:6])
    return project


def audio(desktop):
    server = desktop.spawn(["pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no",
                            "--disable-shm=no", "--realtime=no", "--high-priority=no",
                            "-L", "module-native-protocol-unix socket=%s/pulse.sock auth-anonymous=1" % SCRATCH,
                            "-L", "module-null-sink sink_name=out rate=48000"])
    wait_for("the sound server", lambda: desktop.ask("pactl", "info"))
    music = os.path.join(SCRATCH, "music.wav")
    write_music(music)
    player = desktop.spawn(["paplay", music])
    run, main, _ = open_main(desktop)
    menu_entry(desktop, "w", "Down", "Down")
    window = desktop.window("Audio Configuration")
    desktop.place(window, 20, 300, 756, 360)
    await_frames(desktop, desktop.rect(window))
    desktop.save("audio", desktop.shot(desktop.rect(window)))
    desktop.end_program(run)
    for child in (player, server):
        child.terminate()
        child.wait()
        desktop.children.remove(child)


def write_music(path):
    """A minute of a chord with overtones, at the rate of the server."""
    rate = 48000
    tones = [(110 * 2 ** (step / 12), 1 / (1 + 0.25 * n)) for n, step in enumerate((0, 7, 12, 16, 19, 24, 31, 36, 43, 50, 58))]
    frames = bytearray()
    for n in range(rate):  # a second, which repeats without a break as the tones are brought to whole hertz
        value = sum(weight * math.sin(2 * math.pi * round(tone) * n / rate) for tone, weight in tones)
        frames += struct.pack("<h", int(4000 * value))
    with wave.open(path, "wb") as file:
        file.setnchannels(1)
        file.setsampwidth(2)
        file.setframerate(rate)
        file.writeframes(bytes(frames) * 60)


def help_box(desktop):
    desktop.copy_guide()
    run, _, _ = open_main(desktop)
    desktop.key("F1")
    box = desktop.window("About Pixelgrove")
    desktop.save("help", desktop.shown(desktop.rect(box)))
    desktop.end_program(run)


def recovery(desktop):
    """The question at the start after a program that was killed."""
    run, main, _ = open_main(desktop, example(desktop, "first_steps"))
    desktop.type("// ")
    folder = os.path.join(SCRATCH, "Recovery")
    wait_for("a copy", lambda: os.path.isdir(folder) and any(name.endswith(".json") for name in os.listdir(folder)))
    run.kill()
    run.wait()
    desktop.children.remove(run)
    run, _ = desktop.start()
    question = desktop.window("Unsaved project")
    desktop.save("recovery", desktop.shown(desktop.rect(question)))
    desktop.end_program(run)


PARTS = {"workbench": workbench, "main": main_window, "editor": editor, "errors": errors, "output": output,
         "channels": channels, "controls": controls, "recording": recording, "palettes": palettes,
         "library": library, "audio": audio, "recovery": recovery, "help": help_box}
