#!/usr/bin/env python3
"""Two participants see the same line, by Python's foreign functions and the C interface alone.

Usage: meeting.py LIBRARY
"""
import ctypes as c
import os
import sys
import tempfile

YES, NO, DRAWING, LINE = 1, 0, 1, 10
WIDTH, HEIGHT, WHITE, BLUE = 160, 100, 0xFFFFFFFF, 0xFF0000FF
HANDLE, TEXT, INT, NUMBER, SIZE = c.c_void_p, c.c_char_p, c.c_int32, c.c_uint32, c.c_size_t
LogWriter = c.CFUNCTYPE(None, HANDLE, INT, TEXT)
RECT = INT * 4
PAGE_INFO = INT * 10
ON_PAGE = (HANDLE, TEXT, TEXT)
SIGNATURES = {  # what an operation takes, and what it returns
    "SetLogger": ((TEXT, LogWriter, HANDLE), INT),
    "TextsNew": ((), HANDLE),
    "TextsFree": ((HANDLE,), None),
    "TextsAt": ((HANDLE, SIZE), TEXT),
    "EngineNew": ((), HANDLE),
    "EngineFree": ((HANDLE,), None),
    "Init": ((HANDLE,), INT),
    "SetUserInfo": ((HANDLE, TEXT, TEXT, TEXT), INT),
    "SetPen": ((HANDLE, NUMBER, NUMBER), INT),
    "SetAnnotationType": ((HANDLE, INT, INT), INT),
    "NewDoc": ((HANDLE, TEXT, TEXT), INT),
    "NewPage": ((*ON_PAGE, TEXT, HANDLE, c.POINTER(PAGE_INFO)), INT),
    "StartDrawing": ((*ON_PAGE, INT, INT), INT),
    "MoveDrawing": ((HANDLE, INT, INT), INT),
    "EndDrawing": ((HANDLE,), INT),
    "GetCurrentAnnotationInfo": ((HANDLE, HANDLE, HANDLE, HANDLE), INT),
    "GetLocalAnnotation": ((*ON_PAGE, TEXT), HANDLE),
    "AddAnnotationFromRemote": ((*ON_PAGE, HANDLE), INT),
    "SavePage": ((*ON_PAGE, TEXT, TEXT), INT),
    "MarkCopyFragments": ((HANDLE, INT, c.POINTER(HANDLE), SIZE, c.POINTER(SIZE)), INT),
    "MarkFree": ((HANDLE,), None),
    "WindowNew": ((c.POINTER(RECT),), HANDLE),
    "WindowFree": ((HANDLE,), None),
    "WindowHandle": ((HANDLE,), HANDLE),
    "WindowPresentCount": ((HANDLE,), c.c_uint64),
    "WindowWaitForPresent": ((HANDLE, c.c_uint64, INT), INT),
    "WindowCopyFrame": ((HANDLE, c.POINTER(NUMBER), SIZE, c.POINTER(INT), c.POINTER(INT)), INT),
}
call = {}  # the operations by name, without their prefix


def must(operation, *arguments):
    assert call[operation](*arguments) == YES, operation


class Participant:
    def __init__(self, name):
        self.window = call["WindowNew"](RECT(0, 0, WIDTH, HEIGHT))
        self.engine = call["EngineNew"]()
        self.page = (self.engine, b"doc", "页".encode())
        must("SetUserInfo", self.engine, name.encode(), b"desk", name.encode())
        must("Init", self.engine)
        must("NewDoc", self.engine, name.encode(), b"doc")
        info = PAGE_INFO(0, 0, WIDTH, HEIGHT, 0, 0, 0, WIDTH, HEIGHT, 0)
        must("NewPage", *self.page, name.encode(), call["WindowHandle"](self.window), info)

    def draw(self):
        """Draws a line; returns its one fragment."""
        must("SetPen", self.engine, BLUE, 6)
        must("SetAnnotationType", self.engine, DRAWING, LINE)
        must("StartDrawing", *self.page, 10, 50)
        must("MoveDrawing", self.engine, 150, 50)
        key = call["TextsNew"]()
        must("GetCurrentAnnotationInfo", self.engine, key, None, None)
        must("EndDrawing", self.engine)
        drawn = call["GetLocalAnnotation"](*self.page, call["TextsAt"](key, 0))
        call["TextsFree"](key)
        fragment, count = HANDLE(), SIZE()
        must("MarkCopyFragments", drawn, 1, fragment, 1, count)
        assert count.value == 1
        return fragment

    def see(self):
        """The pixels of everything done so far."""
        # The frame under way may be older than the last call; the one after it is not.
        frame = call["WindowPresentCount"](self.window) + 2
        must("WindowWaitForPresent", self.window, frame, 60_000)
        pixels = (NUMBER * (WIDTH * HEIGHT))()
        must("WindowCopyFrame", self.window, pixels, len(pixels), None, None)
        return list(pixels)

    def leave(self):
        call["EngineFree"](self.engine)
        call["WindowFree"](self.window)


def hold_meeting():
    lines = []
    writer = LogWriter(lambda context, level, text: lines.append((level, text.decode())))
    must("SetLogger", b"SDK", writer, None)
    ada, grace = Participant("Ada Größe"), Participant("张三")
    fragment = ada.draw()
    for one in (ada, grace):
        must("AddAnnotationFromRemote", *one.page, fragment)
    call["MarkFree"](fragment)
    seen = ada.see()
    assert seen == grace.see(), "the pages differ"
    assert (seen[50 * WIDTH + 80], seen[40 * WIDTH + 80]) == (BLUE, WHITE)
    with tempfile.TemporaryDirectory() as folder:
        must("SavePage", *grace.page, os.path.join(folder, "页.png").encode(), b"")
        assert os.listdir(folder) == ["页.png"]
    lines.clear()
    assert call["StartDrawing"](ada.engine, "нет".encode(), b"page", 1, 1) == NO
    assert len(lines) == 1 and lines[0][0] == 0 and "нет" in lines[0][1], lines
    ada.leave()
    grace.leave()
    must("SetLogger", b"SDK", LogWriter(), None)


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    library = c.CDLL(sys.argv[1])
    for name, (takes, returns) in SIGNATURES.items():
        call[name] = getattr(library, "Parchlet" + name)
        call[name].argtypes, call[name].restype = takes, returns
    hold_meeting()
    print("both saw the same page")
