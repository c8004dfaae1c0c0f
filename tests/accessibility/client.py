#!/usr/bin/python3
"""Uses programs as a screen reader does: client.py FORM GALLERY SERVICE CLIENT

Started by a test on an X server and a session bus of its own. FORM is accessibleform, GALLERY the gallery, SERVICE
and CLIENT are the form service of the examples and its client. Ends with 0 when all that is checked holds.
"""

import json
import os
import subprocess
import sys
import tempfile
import time
import traceback
import warnings

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

# The ways into an interface of an object have new names in later versions.
warnings.simplefilter("ignore", DeprecationWarning)

patience = 60  # seconds, for a loaded machine with sanitizers
form_program, gallery_program, service_program, client_program = sys.argv[1:]
failures = []
heard = []


def check(condition, what):
    if not condition:
        failures.append(what)
        print(f"FAIL: {what}", flush=True)


def compare(actual, expected, what):
    check(actual == expected, f"{what}: {actual!r} is not {expected!r}")


def wait_for(condition, what):
    """The first true value of condition(), with the events that come meanwhile."""
    deadline = time.monotonic() + patience
    while True:
        try:
            value = condition()
        except GLib.Error:  # what was asked is just being destroyed
            value = None
        if value:
            return value
        if time.monotonic() > deadline:
            raise AssertionError(f"waited in vain for {what}")
        while GLib.MainContext.default().iteration(False):
            pass
        time.sleep(0.02)


def listen():
    # Not every version of Qt sends the new text with a change, so it is asked for as screen readers do.
    def note(event):
        source = event.source
        try:
            heard.append((event.type, source.get_role_name(), source.get_name(), source.get_description()))
        except GLib.Error:
            pass

    listener = Atspi.EventListener.new(note)
    for kind in ("object:property-change:accessible-name", "object:property-change:accessible-description",
                 "object:state-changed:checked"):
        listener.register(kind)
    return listener


class Program:
    """A running program with the window that it shows."""

    def __init__(self, name, *command):
        self.name = name
        self.process = subprocess.Popen(command, env=dict(os.environ, QT_QPA_PLATFORM="xcb"), stdout=subprocess.PIPE)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.terminate()
        self.process.wait()

    def window(self, title):
        def find():
            check(self.process.poll() is None, f"{self.name} has ended")
            desktop = Atspi.get_desktop(0)
            for i in range(desktop.get_child_count()):
                application = desktop.get_child_at_index(i)
                if application and application.get_name() == self.name:
                    for j in range(application.get_child_count()):
                        window = application.get_child_at_index(j)
                        if window and window.get_name() == title:
                            return window
            return None

        return wait_for(find, f"the window {title!r} of {self.name}")


def descendants(parent):
    for i in range(parent.get_child_count()):
        child = parent.get_child_at_index(i)
        if child:
            yield child
            yield from descendants(child)


def found(parent, role, name):
    return [a for a in descendants(parent) if a.get_role_name() == role and a.get_name() == name]


def find(parent, role, name):
    return wait_for(lambda: found(parent, role, name), f"{role} {name!r}")[0]


def actions(accessible):
    action = accessible.get_action_iface()
    return [action.get_action_name(i) for i in range(action.get_n_actions())] if action else []


def do(accessible, name):
    action = accessible.get_action_iface()
    check(action.do_action(actions(accessible).index(name)), f"{name} on {accessible.get_name()!r}")


def is_checked(accessible):
    return accessible.get_state_set().contains(Atspi.StateType.CHECKED)


def text_of(accessible):
    text = accessible.get_text_iface()
    return text.get_text(0, text.get_character_count())


def write(accessible, text):
    check(accessible.get_editable_text_iface().set_text_contents(text), f"write {text!r}")


texts = {
    "en": {
        "window": "Everything", "order": "Order now", "order description": "The goods arrive in two days.",
        "off": "Sound is off", "on": "Sound is on", "forgot": "Forgot your password?",
        "terms label": "See the terms and the prices.", "terms": "terms", "prices": "prices",
        "long": "A long text that has to be cut somewhere in the middle", "key": "Product key",
        "part": "part {} of 3", "groups": "Three groups.", "complete": "The key is complete.", "name": "Name",
        "missing": "Please enter a name.", "agree": "I agree", "check": "Check", "log": "Log",
    },
    "de": {
        "window": "Alles", "order": "Jetzt bestellen", "order description": "Die Ware kommt in zwei Tagen.",
        "off": "Ton ist aus", "on": "Ton ist an", "forgot": "Kennwort vergessen?",
        "terms label": "Siehe Bedingungen und Preise.", "terms": "Bedingungen", "prices": "Preise",
        "long": "Ein langer Text, der irgendwo in der Mitte gekürzt werden muss", "key": "Produktschlüssel",
        "part": "Teil {} von 3", "groups": "Drei Gruppen.", "complete": "Der Schlüssel ist vollständig.",
        "name": "Name", "missing": "Bitte geben Sie einen Namen ein.", "agree": "Ich stimme zu", "check": "Prüfen",
        "log": "Protokoll",
    },
}


def every_widget(locale):
    """A form with every widget: what each is, and what reaches its delegate."""
    t = texts[locale]
    with Program("accessibleform", form_program, locale) as program:
        window = program.window(t["window"])
        log = find(window, "label", t["log"])

        def logged(line):
            wait_for(lambda: log.get_description() == line, f"{line!r} in the log, which holds {log.get_description()!r}")

        order = find(window, "push button", t["order"])
        compare(order.get_description(), t["order description"], "description of the command link")
        compare(order.get_child_count(), 0, "children of the command link")
        compare(actions(order), ["Press", "SetFocus"], "actions of the command link")
        compare(order.get_action_iface().get_key_binding(0), "Ctrl+O", "key of the command link")
        do(order, "Press")
        logged("orderLink_clicked")

        sound = find(window, "check box", t["off"])
        check(not is_checked(sound), "the switch is off")
        compare(sound.get_child_count(), 0, "children of the switch")
        compare(actions(sound), ["Toggle"], "actions of the switch")
        heard.clear()
        do(sound, "Toggle")
        logged("on()")
        wait_for(lambda: is_checked(sound) and sound.get_name() == t["on"], "the switch to be on")
        wait_for(lambda: [e[0] for e in heard if e[1] == "check box"]
                 == ["object:state-changed:checked", "object:property-change:accessible-name"],
                 "the switch to announce state and name")
        do(sound, "Toggle")
        logged("off()")
        wait_for(lambda: not is_checked(sound) and sound.get_name() == t["off"], "the switch to be off")

        do(find(window, "push button", t["forgot"]), "Press")
        logged("mouseClicked()")

        label = find(window, "label", t["terms label"])
        compare([(a.get_role_name(), a.get_name()) for a in descendants(label)],
                [("link", t["terms"]), ("link", t["prices"])], "links")
        do(find(label, "link", t["prices"]), "Press")
        logged("https://example.com/prices")
        do(find(label, "link", t["terms"]), "Press")
        logged("https://example.com/terms")

        check(found(window, "label", t["long"]), "the label that is cut has its full text as its name")

        key = find(window, "panel", t["key"])
        cells = [key.get_child_at_index(i) for i in range(key.get_child_count())]
        compare([(c.get_role_name(), c.get_name()) for c in cells],
                [("text", t["part"].format(i)) for i in (1, 2, 3)], "cells")
        compare(key.get_description(), t["groups"], "description of the format edit")
        compare(cells[1].get_description(), t["groups"], "description of a cell")
        heard.clear()
        write(cells[0], "AB.1")  # dots are ignored
        logged("keyEdit AB1")
        write(cells[0], "a*")
        compare(text_of(cells[0]), "AB1", "a cell after text against its pattern")
        write(cells[2], "XY")
        compare(text_of(cells[2]), "", "a cell of digits after letters")
        write(key, "CD2-EF3-45")
        logged("keyEdit CD2-EF3-45")
        compare([text_of(c) for c in cells], ["CD2", "EF3", "45"], "cells after the whole was written")
        compare(text_of(key), "CD2-EF3-45", "text of the whole")
        write(key, "nonsense")
        compare(text_of(key), "CD2-EF3-45", "text of the whole after nonsense")
        wait_for(lambda: ("object:property-change:accessible-description", "panel", t["key"], t["complete"]) in heard,
                 "the message of the format edit")
        wait_for(lambda: cells[1].get_description() == t["complete"], "the new description of a cell")

        name = find(window, "text", t["name"])
        compare(name.get_description(), "", "description of the name")
        heard.clear()
        do(find(window, "push button", t["check"]), "Press")
        logged("checkButton_clicked()")
        wait_for(lambda: ("object:property-change:accessible-description", "text", t["name"], t["missing"]) in heard,
                 "the error message")
        compare(name.get_description(), t["missing"], "description of the name")
        write(name, "Ada")
        do(find(window, "push button", t["check"]), "Press")
        logged("checkButton_clicked(Ada)")
        wait_for(lambda: name.get_description() == "", "the end of the error message")

        # A check box is toggled, and as in Qt that is no click.
        agree = find(window, "check box", t["agree"])
        do(agree, "Toggle")
        wait_for(lambda: is_checked(agree), "the check box to be checked")
        compare(log.get_description(), "checkButton_clicked(Ada)", "the log after the check box")


def gallery():
    """Every page of the gallery: roles, names and actions of what is on it."""
    with Program("gallery", gallery_program) as program:
        window = program.window("Gallery")

        def page(name):
            return find(window, "panel", name)

        def specimens(name):
            # between the captions
            p = page(name)
            children = [p.get_child_at_index(i) for i in range(p.get_child_count())]
            return [(c.get_role_name(), c.get_name()) for c in children[1::2]]

        compare(specimens("ZEFCommandLinkButton"), 6 * [("push button", "Save and continue")], "command links")
        compare(specimens("ZEFToggleButton"),
                [("check box", "Notifications are off")] + 2 * [("check box", "Notifications are on")], "toggles")
        for name in ("ZEFLightStdButton", "ZEFLightStdSSButton"):
            compare(specimens(name)[:6], 6 * [("push button", "Continue")], name)
        compare(specimens("ZEFLightStdSSCheckbox")[:6], 6 * [("check box", "Remember me")], "check boxes")
        full = ("label", "Quarterly report of the northern branch office.pdf")
        compare(specimens("ZEFEllipsisLabel"), [("label", "Report.pdf"), full, full, full], "eliding labels")
        compare(specimens("ZEFHyperlinkLabel"), 2 * [("label", "See the terms of use.")], "labels with links")
        compare(len(found(page("ZEFHyperlinkLabel"), "link", "terms of use")), 2, "links")
        compare(specimens("ZEFFlatButton")[:5], 5 * [("push button", "Forgot your password?")], "flat buttons")
        compare([role for role, _ in specimens("ZEFFormatEdit")], 6 * ["panel"], "format edits")
        compare([role for role, _ in specimens("ZEFFormatCell")], 4 * ["text"], "format cells")

        toggle = found(page("ZEFToggleButton"), "check box", "Notifications are off")[0]
        do(toggle, "Toggle")
        wait_for(lambda: toggle.get_name() == "Notifications are on" and is_checked(toggle), "a toggle of the gallery")
        disabled = page("ZEFToggleButton").get_child_at_index(5)
        compare(actions(disabled), [], "actions of a disabled toggle")

        edits = page("ZEFFormatEdit")
        filled = edits.get_child_at_index(3)
        compare(text_of(filled), "AB12C-DE34F-GH56I", "text of a format edit")
        compare([text_of(filled.get_child_at_index(i)) for i in range(3)], ["AB12C", "DE34F", "GH56I"], "its cells")
        write(filled.get_child_at_index(1), "XYZ99")
        wait_for(lambda: text_of(filled) == "AB12C-XYZ99-GH56I", "the text that was written")


def answer(client):
    output, _ = client.communicate(timeout=patience)
    return [json.loads(line) for line in output.splitlines()]


demo = {
    "en": {"signin": "Sign in", "user": "User name", "password": "Password", "activation": "Product activation",
           "key": "Product key", "activate": "Activate", "part": "part 2 of 5"},
    "de": {"signin": "Anmelden", "user": "Benutzername", "password": "Kennwort", "activation": "Produktaktivierung",
           "key": "Produktschlüssel", "activate": "Aktivieren", "part": "Teil 2 von 5"},
}


def form_service(locale):
    """The forms of the form service, filled in and answered."""
    t = demo[locale]
    with tempfile.TemporaryDirectory() as folder:
        socket = os.path.join(folder, "socket")
        with Program("zefui-formservice", service_program, "--socket", socket) as service:
            service.process.stdout.readline()  # it listens

            def ask(**request):
                client = subprocess.Popen([client_program, "--socket", socket], stdin=subprocess.PIPE,
                                          stdout=subprocess.PIPE, text=True)
                client.stdin.write(json.dumps(dict(request, locale=locale)) + "\n")
                client.stdin.close()
                client.stdin = None
                return client

            client = ask(form="signin", dictionaries=[{"product": "Ledger 7", "reason": "-"}],
                         **{"return": ["user.text"]})
            window = service.window(t["signin"])
            write(find(window, "text", t["user"]), "anna")
            write(find(window, "password text", t["password"]), "geheim")
            do(find(window, "push button", t["signin"]), "Press")
            compare(answer(client), [{"selection": 1, "values": {"user.text": "anna"}}], "answer of the sign-in")

            client = ask(form="activation", dictionaries=[{"product": "Ledger 7", "days": "12",
                                                           "product_keys": "7K02M3QX9PLD5T8R"}],
                         **{"return": ["productKey.text"]})
            window = service.window(t["activation"])
            key = find(window, "panel", t["key"])
            compare(key.get_child_at_index(1).get_name(), t["part"], "name of a cell")
            write(key, "7KO2M3QX9PLD5T8R")
            activate = find(window, "push button", t["activate"])
            wait_for(lambda: activate.get_state_set().contains(Atspi.StateType.ENABLED), "the button of a valid key")
            do(activate, "Press")
            compare(answer(client), [{"selection": 1, "values": {"productKey.text": "7K02-M3QX-9PLD-5T8R"}}],
                    "answer of the activation")


Atspi.init()
listener = listen()
for step, arguments in ((every_widget, ("en",)), (every_widget, ("de",)), (gallery, ()),
                        (form_service, ("en",)), (form_service, ("de",))):
    print(f"{step.__name__} {' '.join(arguments)}", flush=True)
    try:
        step(*arguments)
    except Exception:  # the next step may work
        failures.append(step.__name__)
        traceback.print_exc()
sys.exit(1 if failures else 0)
