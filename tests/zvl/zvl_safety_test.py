#!/usr/bin/env python3
"""zvl and files that must not be lost: names in any script, damaged
lists named as damaged, outputs that are their own input, device names.

    zvl_safety_test.py BUILD_DIR SOURCE_DIR
"""
import os
import struct
import subprocess
import sys
import tempfile

BUILD = os.path.abspath(sys.argv[1])
SOURCE = os.path.abspath(sys.argv[2])
BIN = os.path.join(BUILD, "bin")
RUNNER = os.path.join(SOURCE, "tools", "wine-run.sh")
WORK = tempfile.mkdtemp(prefix="zvl-safety-", dir=BUILD)
failed = 0


def check(ok, what, detail=""):
    global failed
    if not ok:
        failed += 1
        print("FAIL", what, "\n   ", detail)


def zvl(*args):
    out_path, err_path = os.path.join(WORK, "stdout"), os.path.join(WORK, "stderr")
    args = ("--lang", os.path.join(BIN, "LangEng.dll")) + args
    with open(out_path, "wb") as out, open(err_path, "wb") as err:
        status = subprocess.call([RUNNER, BUILD, os.path.join(BIN, "zvl.exe")] + list(args), stdout=out,
                                 stderr=err, stdin=subprocess.DEVNULL, timeout=60)
    stderr = [l for l in open(err_path, "rb").read().decode("utf-8", "replace").splitlines()
              if l and "setlocale" not in l]
    return status, open(out_path, "rb").read().decode("utf-8"), stderr


def u32(v):
    return struct.pack("<I", v & 0xFFFFFFFF)


def chunk(tag, payload=b""):
    return u32(len(payload)) + u32(tag) + payload


def wtext(s):
    return s.encode("utf-16-le") + b"\0\0"


def a_list(texts):
    """One text field; one item per text."""
    b = wtext("1.7") + u32(1) + u32(len(texts)) + chunk(1010, u32(-1) + u32(0))
    b += chunk(4321) + chunk(1001, u32(80)) + chunk(1004, wtext("What")) + chunk(1002, u32(3))
    b += chunk(1003, wtext("")) + chunk(1005, u32(0)) + chunk(1006, u32(0)) + chunk(1234)
    return b + b"".join(chunk(3, wtext(t)) for t in texts)


def put(name, data):
    path = os.path.join(WORK, name)
    with open(path, "wb") as f:
        f.write(data)
    return path


def read(path):
    with open(path, "rb") as f:
        return f.read()


def main():
    # Names in any script: made, shown, renamed and exported.
    for name in ["Caf\u00e9 cr\u00e8me", "\u0395\u03bb\u03bb\u03b7\u03bd\u03b9\u03ba\u03ac",
                 "\u65e5\u672c\u8a9e\u306e\u30ea\u30b9\u30c8", "\u4e2d\u6587\u6e05\u5355", "Party \U0001F389"]:
        item = name + " item"
        path = put(name + ".zvl", a_list([item]))
        status, out, err = zvl("show", path)
        check(status == 0 and item in out, "show " + repr(name), (status, out, err))
        renamed = os.path.join(WORK, name + " renamed.zvl")
        os.rename(path, renamed)
        status, out, err = zvl("export", renamed, os.path.join(WORK, name + ".CSV"))
        text = read(os.path.join(WORK, name + ".CSV")) if status == 0 else b""
        check(status == 0 and text.startswith(b"\xff\xfe") and item.encode("utf-16-le") in text,
              "export " + repr(name), (status, err))
        status, out, err = zvl("import", os.path.join(WORK, name + ".CSV"), WORK)
        check(status == 0 and os.path.exists(os.path.join(WORK, name + ".zvl")), "import " + repr(name), (status, err))

    # Damaged lists: one line on stderr naming the damage, status 1.
    whole = a_list(["one", "two", "three"])
    for name, data, words in [("cut.zvl", whole[:-5], "damaged: 2 of 3"), ("empty.zvl", b"", "empty"),
                              ("junk.zvl", b"PK\x03\x04" * 8, "damaged")]:
        status, out, err = zvl("show", put(name, data))
        check(status == 1 and len(err) == 1 and words in err[0] and out == "", "damaged " + name, (status, out, err))

    # An output that is its own input is refused and the file kept.
    lst = put("Own.zvl", whole)
    status, out, err = zvl("export", lst, lst)
    check(status == 1 and read(lst) == whole and len(err) == 1, "export onto itself", (status, err))
    status, out, err = zvl("make", lst, lst, "--force")
    check(status == 1 and read(lst) == whole, "make onto itself", (status, err))

    # Reserved device names are invalid names, not successes, even with --force.
    for device in ["nul", "aux.CSV", "com1.CSV"]:
        status, out, err = zvl("export", lst, os.path.join(WORK, device), "--force")
        check(status == 1 and len(err) == 1 and "cannot be used" in err[0], "export to " + device, (status, err))

    # --force replaces without asking and without printing a question.
    put("Own.CSV", b"\xff\xfe" + "(Text)What\r\nx\t".encode("utf-16-le"))
    status, out, err = zvl("import", os.path.join(WORK, "Own.CSV"), WORK, "--force")
    check(status == 0 and err == [], "import --force is quiet", (status, err))

    print("zvl safety:", "failed %d" % failed if failed else "all passed")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
