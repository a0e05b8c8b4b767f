#!/usr/bin/env python3
"""End-to-end checks of zvl.exe, run under Wine through tools/wine-run.sh.

    zvl_test.py BUILD_DIR SOURCE_DIR

Expected file bytes are built here from the file layout (header, tagged
chunks, UTF-16 text), never by the code under test. Wine starts are kept few:
each check runs zvl once and looks at everything that run produced.
"""
import json
import os
import shutil
import struct
import subprocess
import sys
import tempfile

BUILD = os.path.abspath(sys.argv[1])
SOURCE = os.path.abspath(sys.argv[2])
BIN = os.path.join(BUILD, "bin")
ZVL = os.path.join(BIN, "zvl.exe")
RUNNER = os.path.join(SOURCE, "tools", "wine-run.sh")
SAMPLES = os.path.join(BIN, "samples")
WORK = tempfile.mkdtemp(prefix="zvl-test-", dir=BUILD)

passed = 0
failed = 0


def check(ok, what, detail=""):
    global passed, failed
    if ok:
        passed += 1
    else:
        failed += 1
        print("FAIL", what)
        if detail:
            print("    " + str(detail).replace("\n", "\n    "))


def zvl(*args, locale="en_US.UTF-8", lang=True):
    """Runs zvl; returns (status, stdout text, stderr lines). Output goes to
    files, never pipes, so Wine's helper processes cannot hold them open.
    The language module is named unless `lang` is false: other tests may
    leave a program configuration in the build's Wine registry."""
    if lang:
        args = ("--lang", os.path.join(BIN, "LangEng.dll")) + args
    out_path = os.path.join(WORK, "stdout")
    err_path = os.path.join(WORK, "stderr")
    env = dict(os.environ, ZV_LOCALE=locale)
    with open(out_path, "wb") as out, open(err_path, "wb") as err:
        status = subprocess.call([RUNNER, "--prefix", "wine-test", BUILD, ZVL] + list(args), stdout=out, stderr=err,
                                 stdin=subprocess.DEVNULL, env=env, timeout=60)
    stdout = open(out_path, "rb").read().decode("utf-8")
    # The runner's shell may warn about a missing Linux locale; that is not zvl.
    stderr = [l for l in open(err_path, "rb").read().decode("utf-8", "replace").splitlines()
              if l and "setlocale" not in l]
    return status, stdout, stderr


# ---- file layout ------------------------------------------------------------

def u32(v):
    return struct.pack("<I", v & 0xFFFFFFFF)


def wtext(s):
    return s.encode("utf-16-le") + b"\0\0"


def chunk(tag, payload=b""):
    return u32(len(payload)) + u32(tag) + payload


def systemtime(y, mo, d, h=0, mi=0, dow=0):
    return struct.pack("<8H", y, mo, dow, d, h, mi, 0, 0)


CHOICE_TYPES = (2, 4, 6, 8)


def field(name, ftype, width, default_text="", default_choice=0, date_mode=0, time_mode=0):
    b = chunk(4321) + chunk(1001, u32(width)) + chunk(1004, wtext(name)) + chunk(1002, u32(ftype))
    if ftype in CHOICE_TYPES:
        b += chunk(1009, u32(default_choice))
    if ftype not in (2, 6, 8):
        b += chunk(1003, wtext(default_text))
    return b + chunk(1005, u32(date_mode)) + chunk(1006, u32(time_mode)) + chunk(1234)


def list_file(fields, items, sort=(-1, 0), version="1.7"):
    b = wtext(version) + u32(len(fields)) + u32(len(items))
    b += chunk(1010, u32(sort[0]) + u32(sort[1]))
    for f in fields:
        b += f
    for color, cells in items:
        if color is not None:
            b += chunk(120, u32(color))
        for tag, payload in cells:
            b += chunk(tag, payload)
    return b


def chunks_after(data, offset):
    """Splits the chunks after a header into (tag, payload) pairs."""
    out = []
    while offset + 8 <= len(data):
        size, tag = struct.unpack_from("<II", data, offset)
        out.append((tag, data[offset + 8:offset + 8 + size]))
        offset += 8 + size
    return out


def without_icon(data, header):
    rest = chunks_after(data, header)
    if rest and rest[0][0] == 1007:
        rest = rest[5:]
    return data[:header] + b"".join(chunk(t, p) for t, p in rest)


def widths_doubled(data, header):
    """The same file with every column width (chunk 1001) twice as wide."""
    rest = chunks_after(data, header)
    return data[:header] + b"".join(
        chunk(t, struct.pack("<i", 2 * struct.unpack("<i", p)[0]) if t == 1001 else p) for t, p in rest)


def icon_size(data, header):
    rest = chunks_after(data, header)
    if not rest or rest[0][0] != 1007:
        return None
    w, h = struct.unpack("<ii", rest[0][1])
    planes = [p for t, p in rest[1:5]]
    return (w, h) if all(len(p) == w * h for p in planes) else ("bad planes", w, h)


# A list written by hand: every kind of cell, a row colour, a cell whose tag
# differs from its field's type, and a sort state.
HAND_FIELDS = [
    field("Task", 3, 80),
    field("Due", 0, 60, default_text="Today"),
    field("", 2, 30),                     # an empty name shows the type's name
    field("Done", 6, 24),
    field("Share", 8, 40, default_choice=0),
    field("Paid", 4, 30, default_text="No", default_choice=1),
    field("Cost", 5, 40),
]
HAND_ITEMS = [
    (None, [(3, wtext("Renew passport")), (0, systemtime(2007, 3, 1)), (2, u32(1)), (6, u32(0)),
            (8, u32(5)), (4, u32(1)), (5, wtext("85.50"))]),
    (0xB5DBB5, [(3, wtext("Book hotel \u00e9t\u00e9")), (0, systemtime(2007, 12, 25)), (2, u32(2)), (6, u32(1)),
                (8, u32(11)), (4, u32(0)), (5, wtext("-12"))]),
]
HAND_SHOW = [
    "Task\tDue\tPriority\tDone\tShare\tPaid\tCost",
    "Renew passport\t03/01/2007\tHigh\tNot done\t50%\tYes\t85.50",
    "Book hotel \u00e9t\u00e9\t12/25/2007\tLow\tDone\t\tNo\t-12",
]


def main():
    hand = os.path.join(WORK, "hand.zvl")
    with open(hand, "wb") as f:
        f.write(list_file(HAND_FIELDS, HAND_ITEMS, sort=(1, 1)))

    # Usage: help on stdout with 0, mistakes on stderr with 2.
    status, out, err = zvl("--help")
    check(status == 0 and out.startswith("Usage: zvl") and "zvl import TEXT FOLDER" in out, "--help", (status, out))
    status, out, err = zvl(lang=False)
    check(status == 2 and out == "" and err == ["zvl: no command given (see zvl --help)"], "no command", (status, err))
    status, out, err = zvl("show", "--force", hand)
    check(status == 2 and err == ["zvl: --force works with export, import, new and make only (see zvl --help)"],
          "bad option", err)

    # Without --lang: the installed program's module, else the one beside zvl.
    status, out, err = zvl("show", hand, lang=False)
    check(status == 0 and out.startswith("Task\tDue\t"), "default language module", (status, out, err))

    # show: the window's texts, in file order, with the list's own date order.
    status, out, err = zvl("show", hand)
    check(status == 0 and err == [], "show status", (status, err))
    check(out.split("\n") == HAND_SHOW + [""], "show text", out)

    # show --json: types and typed values beside the texts.
    status, out, err = zvl("show", "--json", hand)
    doc = json.loads(out) if status == 0 else {}
    check(doc.get("kind") == "list" and doc.get("icon") is None, "json kind", out[:200])
    check(doc.get("sort") == {"column": 1, "field": "Due", "flag": 1, "order": "descending"}, "json sort",
          doc.get("sort"))
    fields = doc.get("fields", [])
    check([f["type"] for f in fields] == ["Text", "Date", "Priority", "Check", "Selection", "YesNo", "Number"],
          "json field types", fields)
    check(fields and fields[2]["name"] == "" and fields[2]["title"] == "Priority", "json empty name", fields[2:3])
    items = doc.get("items", [])
    check(len(items) == 2 and items[0]["backColor"] is None and items[1]["backColor"] == "#B5DBB5",
          "json colours", items)
    if len(items) == 2:
        values = [c["value"] for c in items[0]["cells"]]
        # Choices by name with their code beside; a number's text as typed.
        check(values == ["Renew passport", "2007-03-01", "High", "Not done", "50%", "Yes", "85.50"], "json values", values)
        check([c.get("choice") for c in items[0]["cells"]] == [None, None, 1, 0, 5, 1, None], "json choices",
              items[0]["cells"])
        check(items[1]["cells"][4] == {"text": "", "value": "", "choice": 11}, "json empty selection",
              items[1]["cells"][4])
    check(fields and isinstance(fields[1]["dateDefaultMode"], str) and fields[0]["dateDefaultMode"] is None
          and isinstance(fields[2]["defaultChoice"], str), "json modes by name", fields[:3])

    # info: the header facts.
    status, out, err = zvl("info", hand)
    lines = out.split("\n")
    check(status == 0 and "Kind:     list" in lines and "Fields:   7" in lines and "Items:    2" in lines
          and "Icon:     none" in lines and "Sort:     Due (field 2), descending (flag 1)" in lines, "info", out)

    # export: the list window's bytes, built here from the export layout.
    export_path = os.path.join(WORK, "hand.csv")
    status, out, err = zvl("export", hand, export_path)
    want = "\ufeff" + "(Text)Task\t(Date)Due\t(Priority)\t(Check)Done\t(Selection)Share\t(Yes/No)Paid\t(Number)Cost"
    for line in HAND_SHOW[1:]:
        want += "\r\n" + line + "\t"
    got = open(export_path, "rb").read() if os.path.exists(export_path) else b""
    check(status == 0 and got == want.encode("utf-16-le"), "export bytes", (status, err, got[:80]))
    status, out, err = zvl("export", hand, export_path)
    check(status == 1 and len(err) == 1 and "already exists" in err[0], "export refuses to replace", (status, err))
    status, out, err = zvl("export", "--force", hand, export_path)
    check(status == 0 and open(export_path, "rb").read() == got, "export --force", (status, err))

    # import: the export comes back as a list with the same texts; columns
    # share 240 pixels; an existing list is kept unless --force.
    target = os.path.join(WORK, "imported")
    os.mkdir(target)
    status, out, err = zvl("import", export_path, target)
    made = os.path.join(target, "hand.zvl")
    check(status == 0 and os.path.exists(made) and out.strip().endswith("hand.zvl"), "import", (status, out, err))
    status, out, err = zvl("show", "--json", made)
    doc = json.loads(out) if status == 0 else {}
    texts = ["\t".join([f["title"] for f in doc.get("fields", [])])]
    texts += ["\t".join(c["text"] for c in item["cells"]) for item in doc.get("items", [])]
    check(texts == HAND_SHOW, "export-import round trip", texts)
    check([f["width"] for f in doc.get("fields", [])] == [240 // 7] * 7, "import widths", doc.get("fields"))
    before = open(made, "rb").read()
    status, out, err = zvl("import", export_path, target)
    check(status == 1 and len(err) == 1 and "already exists" in err[0] and open(made, "rb").read() == before,
          "import refuses to replace", (status, err))
    os.remove(made)
    with open(made, "wb") as f:
        f.write(b"keep")
    status, out, err = zvl("import", "--force", export_path, target)
    check(status == 0 and open(made, "rb").read() == before, "import --force", (status, err))

    # A version the program refuses: one stderr line with its message.
    old = os.path.join(WORK, "old.zvl")
    with open(old, "wb") as f:
        f.write(list_file(HAND_FIELDS[:1], [], version="1.6"))
    status, out, err = zvl("info", old)
    check(status == 1 and out == "" and len(err) == 1 and err[0].startswith("zvl: ") and "old.zvl" in err[0]
          and "version" in err[0].lower(), "version refusal", (status, err))
    status, out, err = zvl("show", os.path.join(WORK, "missing.zvl"))
    check(status == 1 and len(err) == 1 and "cannot open" in err[0], "missing file", err)

    # The date order follows the system locale; a Windows-style path works
    # as well as a device-style one.
    windows_path = "Z:" + hand.replace("/", "\\")
    status, out, err = zvl("show", windows_path, locale="en_GB.UTF-8")
    check(status == 0 and out.split("\n")[1].split("\t")[1] == "01/03/2007", "day-month-year dates", (out, err))

    # The German module: its type and choice texts, and dates with dots
    # because of its name, in the order of a German system.
    status, out, err = zvl("--lang", os.path.join(BIN, "LangGer.dll"), "show", hand, lang=False, locale="de_DE.UTF-8")
    check(out.split("\n") == ["Task\tDue\tPriorit\u00e4t\tDone\tShare\tPaid\tCost",
                              "Renew passport\t01.03.2007\tHoch\tOffen\t50%\tJa\t85.50",
                              "Book hotel \u00e9t\u00e9\t25.12.2007\tNiedrig\tErledigt\t\tNein\t-12", ""],
          "German show", (status, out, err))

    # new: a 16-byte list header followed by the template's own chunks.
    template = os.path.join(SAMPLES, "qvga", "templates", "Packing.zvt")
    tbytes = open(template, "rb").read()
    fresh = os.path.join(WORK, "trip.zvl")
    status, out, err = zvl("new", template, fresh)
    want = wtext("1.7") + tbytes[8:12] + u32(0) + tbytes[12:]
    check(status == 0 and open(fresh, "rb").read() == want, "new bytes", (status, err))
    status, out, err = zvl("new", template, fresh)
    check(status == 1 and "already exists" in "".join(err), "new refuses to replace", err)
    bad_template = os.path.join(WORK, "old.zvt")
    with open(bad_template, "wb") as f:
        f.write(wtext("1.6") + u32(0))
    status, out, err = zvl("new", bad_template, os.path.join(WORK, "never.zvl"))
    check(status == 1 and len(err) == 1 and not os.path.exists(os.path.join(WORK, "never.zvl")),
          "new from a refused template leaves nothing", (status, err))

    # The samples: all ten in both variants, icons 16 and 32 pixels, column
    # widths doubled for the high-density screen, otherwise identical.
    lists = ["Business/Company goals 2007.zvl", "Personal/Grocery - morning workdays.zvl",
             "Personal/Grocery - weekly.zvl", "Personal/Travel - business flights.zvl"]
    templates = ["Goals.zvt", "Packing.zvt", "Shopping.zvt", "Simple list.zvt", "Dated Assignments.zvt",
                 "Simple check-list.zvt"]
    for rel, header in [("lists/" + n, 16) for n in lists] + [("templates/" + n, 12) for n in templates]:
        q = os.path.join(SAMPLES, "qvga", rel)
        v = os.path.join(SAMPLES, "vga", rel)
        if not (os.path.exists(q) and os.path.exists(v)):
            check(False, "sample exists: " + rel)
            continue
        qb, vb = open(q, "rb").read(), open(v, "rb").read()
        check(icon_size(qb, header) == (16, 16) and icon_size(vb, header) == (32, 32), "sample icons: " + rel,
              (icon_size(qb, header), icon_size(vb, header)))
        check(widths_doubled(without_icon(qb, header), header) == without_icon(vb, header),
              "sample variants agree: " + rel)

    status, out, err = zvl("info", os.path.join(SAMPLES, "qvga", "lists", "Business", "Company goals 2007.zvl"))
    check(status == 0 and "Items:    8" in out and "Sort:     Due (field 2), ascending (flag 0)" in out,
          "sample info", out)
    status, out, err = zvl("info", os.path.join(SAMPLES, "vga", "templates", "Goals.zvt"))
    check(status == 0 and "Kind:     template" in out and "Icon:     32 x 32" in out, "template info", out)

    # A sample through export and import keeps every text.
    weekly = os.path.join(SAMPLES, "qvga", "lists", "Personal", "Grocery - weekly.zvl")
    status, shown, err = zvl("show", weekly)
    text_path = os.path.join(WORK, "Grocery - weekly.csv")
    status2, out, err2 = zvl("export", weekly, text_path)
    status3, out, err3 = zvl("import", text_path, WORK)
    status4, again, err4 = zvl("show", os.path.join(WORK, "Grocery - weekly.zvl"))
    check((status, status2, status3, status4) == (0, 0, 0, 0) and shown == again and shown.count("\n") == 12,
          "sample round trip", (status, status2, status3, status4, err, err2, err3, err4, shown, again))

    # make: a source error names its line.
    source = os.path.join(WORK, "bad.txt")
    with open(source, "w", encoding="utf-8") as f:
        f.write("kind: list\ncolumns:\nWhen | Date\nitems:\nWhen\n2007-02-30\n")
    status, out, err = zvl("make", source, os.path.join(WORK, "bad.zvl"))
    check(status == 1 and len(err) == 1 and "line 6" in err[0] and "not a date" in err[0], "make error", err)

    print("%d passed, %d failed" % (passed, failed))
    return 1 if failed else 0


if __name__ == "__main__":
    try:
        code = main()
    finally:
        shutil.rmtree(WORK, ignore_errors=True)
    sys.exit(code)
