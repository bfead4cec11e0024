#!/usr/bin/env python3
"""Two participants hold a meeting through the C interface, by Python's foreign functions alone.

Usage: meeting.py LIBRARY
"""
import ctypes as c
import os
import struct
import sys
import tempfile
import zlib

YES, NO = 1, 0
DRAWING, PATH, PICTURE = 1, 0, 3
WIDTH, HEIGHT = 160, 100
WHITE, GREEN, BLUE = 0xFFFFFFFF, 0xFF00FF00, 0xFF0000FF
FRAGMENT = 16  # points a message


class Point(c.Structure):
    _fields_ = [("x", c.c_int32), ("y", c.c_int32), ("xRatio", c.c_double), ("yRatio", c.c_double)]


class Pixel(c.Structure):
    _fields_ = [("x", c.c_int32), ("y", c.c_int32)]


class Rect(c.Structure):
    _fields_ = [(side, c.c_int32) for side in ("left", "top", "right", "bottom")]


class Pen(c.Structure):
    _fields_ = [("color", c.c_uint32), ("width", c.c_int32), ("fill", c.c_int32)]


class PageInfo(c.Structure):
    _fields_ = [("userValue1", c.c_int32), ("userValue2", c.c_int32), ("width", c.c_int32),
                ("height", c.c_int32), ("transparent", c.c_int32), ("viewRect", Rect),
                ("backgroundColor", c.c_uint32)]


LogWriter = c.CFUNCTYPE(None, c.c_void_p, c.c_int32, c.c_char_p)
HANDLE, TEXT, INT, COLOR, SIZE = c.c_void_p, c.c_char_p, c.c_int32, c.c_uint32, c.c_size_t
ON_PAGE = (HANDLE, TEXT, TEXT)
SIGNATURES = {  # what an operation takes and gives
    "SetLogger": ((TEXT, LogWriter, HANDLE), INT),
    "TextsNew": ((), HANDLE),
    "TextsFree": ((HANDLE,), None),
    "TextsAt": ((HANDLE, SIZE), TEXT),
    "EngineNew": ((), HANDLE),
    "EngineFree": ((HANDLE,), None),
    "Init": ((HANDLE,), INT),
    "SetUserInfo": ((HANDLE, TEXT, TEXT, TEXT), INT),
    "SetPen": ((HANDLE, COLOR, COLOR), INT),
    "SetAnnotationType": ((HANDLE, INT, INT), INT),
    "NewDoc": ((HANDLE, TEXT, TEXT), INT),
    "NewPage": ((*ON_PAGE, TEXT, HANDLE, c.POINTER(PageInfo)), INT),
    "StartDrawing": ((*ON_PAGE, INT, INT), INT),
    "MoveDrawing": ((HANDLE, INT, INT), INT),
    "EndDrawing": ((HANDLE,), INT),
    "GetCurrentAnnotationInfo": ((HANDLE, HANDLE, HANDLE, HANDLE), INT),
    "GetLocalAnnotation": ((*ON_PAGE, TEXT), HANDLE),
    "GetAnnotation": ((*ON_PAGE, TEXT, TEXT), HANDLE),
    "AddAnnotationFromRemote": ((*ON_PAGE, HANDLE), INT),
    "StartSelecting": ((*ON_PAGE, TEXT, TEXT, INT, INT), INT),
    "MoveSelecting": ((HANDLE, INT, INT), INT),
    "EndSelecting": ((HANDLE,), INT),
    "GetSelectedAnnotations": ((*ON_PAGE, c.POINTER(HANDLE), SIZE), INT),
    "EraseSelectedAnnotations": ((*ON_PAGE, HANDLE), INT),
    "EraseAnnotations": ((*ON_PAGE, TEXT, TEXT, c.POINTER(Pixel), SIZE, HANDLE), INT),
    "EraseAnnotation": ((*ON_PAGE, TEXT, TEXT), INT),
    "EraseAnnotationFromRemote": ((*ON_PAGE, TEXT, TEXT), INT),
    "AddPictureFromStream": ((*ON_PAGE, TEXT, SIZE, TEXT, INT), HANDLE),
    "SavePage": ((*ON_PAGE, TEXT, TEXT), INT),
    "MarkNew": ((), HANDLE),
    "MarkFree": ((HANDLE,), None),
    "MarkInit": ((HANDLE, c.POINTER(Pen), INT, INT, TEXT, TEXT, TEXT), INT),
    "MarkSetAnnotationId": ((HANDLE, TEXT), INT),
    "MarkGetAnnotationId": ((HANDLE, HANDLE), INT),
    "MarkGetUser": ((HANDLE, HANDLE, HANDLE, HANDLE), INT),
    "MarkGetPen": ((HANDLE, c.POINTER(Pen)), INT),
    "MarkGetType": ((HANDLE, c.POINTER(INT), c.POINTER(INT)), INT),
    "MarkSetOrder": ((HANDLE, INT), INT),
    "MarkSetSubModelIndex": ((HANDLE, INT), INT),
    "MarkInsertPoints": ((HANDLE, COLOR, c.POINTER(Point), SIZE), INT),
    "MarkGetSubModels": ((HANDLE, c.POINTER(COLOR), SIZE, c.POINTER(SIZE)), INT),
    "MarkGetPoints": ((HANDLE, COLOR, c.POINTER(Point), SIZE, c.POINTER(SIZE)), INT),
    "MarkSetPictureFromStream": ((HANDLE, TEXT, SIZE, TEXT), INT),
    "WindowNew": ((c.POINTER(Rect),), HANDLE),
    "WindowFree": ((HANDLE,), None),
    "WindowHandle": ((HANDLE,), HANDLE),
    "WindowPresentCount": ((HANDLE,), c.c_uint64),
    "WindowWaitForPresent": ((HANDLE, c.c_uint64, INT), INT),
    "WindowCopyFrame": ((HANDLE, c.POINTER(COLOR), SIZE, c.POINTER(INT), c.POINTER(INT)), INT),
}
call = {}  # the operations by name, without their prefix


def must(operation, *arguments):
    assert call[operation](*arguments) == YES, operation


def texts_of(operation, *arguments, count=1):
    """The texts that an operation puts into so many lists behind its arguments."""
    lists = [call["TextsNew"]() for _ in range(count)]
    must(operation, *arguments, *lists)
    texts = [call["TextsAt"](one, 0) for one in lists]
    for one in lists:
        call["TextsFree"](one)
    return texts


def png(width, height, color):
    """The bytes of a picture, by a writer that knows nothing of the library."""
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))
    rows = (b"\0" + struct.pack(">I", color)[1:] * width) * height
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0))
            + chunk(b"IDAT", zlib.compress(rows)) + chunk(b"IEND", b""))


def read_points(mark):
    """All points of a mark, sub-model by sub-model."""
    count = SIZE()
    must("MarkGetSubModels", mark, None, 0, c.byref(count))
    numbers = (COLOR * count.value)()
    must("MarkGetSubModels", mark, numbers, len(numbers), None)
    every = []
    for number in numbers:
        must("MarkGetPoints", mark, number, None, 0, c.byref(count))
        points = (Point * count.value)()
        must("MarkGetPoints", mark, number, points, len(points), None)
        every += [(p.x, p.y, p.xRatio, p.yRatio) for p in points]
    return every


def read_mark(mark, order, picture=b""):
    """The messages that tell of a mark, as plain values."""
    pen, kind, sub_kind = Pen(), INT(), INT()
    must("MarkGetPen", mark, c.byref(pen))
    must("MarkGetType", mark, c.byref(kind), c.byref(sub_kind))
    texts = texts_of("MarkGetAnnotationId", mark) + texts_of("MarkGetUser", mark, count=3)
    points = read_points(mark)
    return [{"texts": texts, "pen": (pen.color, pen.width, pen.fill), "order": order,
             "type": (kind.value, sub_kind.value), "index": index, "picture": picture,
             "points": points[first:first + FRAGMENT]}
            for index, first in enumerate(range(0, len(points), FRAGMENT))]


class Participant:
    def __init__(self, name):
        self.window = call["WindowNew"](c.byref(Rect(0, 0, WIDTH, HEIGHT)))
        self.engine = call["EngineNew"]()
        self.page = (self.engine, b"doc", b"page")
        must("SetUserInfo", self.engine, name.encode(), b"desk", name.encode())
        must("Init", self.engine)
        must("NewDoc", self.engine, name.encode(), b"doc")
        info = PageInfo(0, 0, WIDTH, HEIGHT, 0, Rect(0, 0, WIDTH, HEIGHT), 0)
        must("NewPage", *self.page, name.encode(), call["WindowHandle"](self.window), c.byref(info))

    def leave(self):
        call["EngineFree"](self.engine)
        call["WindowFree"](self.window)

    def draw(self, color, width, points):
        """Draws a path; gives it, borrowed from the page."""
        must("SetPen", self.engine, color, width)
        must("SetAnnotationType", self.engine, DRAWING, PATH)
        must("StartDrawing", *self.page, *points[0])
        for point in points[1:]:
            must("MoveDrawing", self.engine, *point)
        key = texts_of("GetCurrentAnnotationInfo", self.engine, count=3)[0]
        must("EndDrawing", self.engine)
        return call["GetLocalAnnotation"](*self.page, key)

    def receive(self, message):
        mark = call["MarkNew"]()
        key, *user = message["texts"]
        points = (Point * len(message["points"]))(*message["points"])
        must("MarkInit", mark, c.byref(Pen(*message["pen"])), *message["type"], *user)
        must("MarkSetAnnotationId", mark, key)
        must("MarkSetOrder", mark, message["order"])
        must("MarkSetSubModelIndex", mark, message["index"])
        must("MarkInsertPoints", mark, 0, points, len(points))
        if message["type"][0] == PICTURE:
            must("MarkSetPictureFromStream", mark, message["picture"], len(message["picture"]), b"")
        must("AddAnnotationFromRemote", *self.page, mark)
        call["MarkFree"](mark)

    def see(self):
        """The pixels of everything done so far."""
        # The frame under way may be older than the last call; the one after it is not.
        frame = call["WindowPresentCount"](self.window) + 2
        must("WindowWaitForPresent", self.window, frame, 60_000)
        pixels, width, height = (COLOR * (WIDTH * HEIGHT))(), INT(), INT()
        must("WindowCopyFrame", self.window, pixels, len(pixels), c.byref(width), c.byref(height))
        assert (width.value, height.value) == (WIDTH, HEIGHT)
        return list(pixels)


def both_see(ada, grace, **colors):
    """Both see the same page, and at "atX_Y" the colour given."""
    seen = ada.see()
    assert seen == grace.see(), "the pages differ"
    for place, color in colors.items():
        x, y = map(int, place[2:].split("_"))
        assert seen[y * WIDTH + x] == color, (place, hex(seen[y * WIDTH + x]))


def relay(ada, grace, messages):
    for message in messages:
        for one in (grace, ada):
            one.receive(message)


def draw_and_place(ada, grace):
    """Grace places a picture; Ada's line comes in fragments, backwards and twice, above it."""
    line = read_mark(ada.draw(BLUE, 6, [(x, 20) for x in range(10, 151, 2)]), 2)
    picture = png(40, 30, GREEN)
    placed = call["AddPictureFromStream"](*grace.page, picture, len(picture), "图".encode(), 0)
    assert len(line) > 3
    relay(ada, grace, line[::-1] + line + read_mark(placed, 1, picture))
    both_see(ada, grace, at80_20=BLUE, at20_20=BLUE, at20_10=GREEN, at80_10=WHITE)
    user, key = line[0]["texts"][1::-1]
    known = call["GetAnnotation"](*grace.page, user, key)
    assert read_points(known) == sum((message["points"] for message in line), [])
    return user, key


def move(ada, grace):
    """Ada takes the line between a rubber band, and drags it down."""
    must("StartSelecting", *ada.page, b"", b"", 1, 90)
    assert call["MoveSelecting"](ada.engine, WIDTH, 5) == NO
    call["EndSelecting"](ada.engine)
    selected = (HANDLE * 3)()
    count = call["GetSelectedAnnotations"](*ada.page, selected, 3)
    assert count == 1, count
    must("StartSelecting", *ada.page, b"", b"", 80, 20)
    must("MoveSelecting", ada.engine, 80, 60)
    must("EndSelecting", ada.engine)
    relay(ada, grace, read_mark(selected[0], 3))
    assert len(texts_of("EraseSelectedAnnotations", *ada.page)[0]) == 36
    both_see(ada, grace, at80_60=BLUE, at80_20=WHITE, at20_20=GREEN)


def erase(ada, grace, user, key):
    way = (Pixel * 2)(Pixel(80, 40), Pixel(80, 80))
    assert texts_of("EraseAnnotations", *grace.page, b"", b"", way, 2) == [key]
    must("EraseAnnotation", *grace.page, user, key)
    must("EraseAnnotationFromRemote", *ada.page, user, key)
    both_see(ada, grace, at80_60=WHITE, at20_20=GREEN)


def hold_meeting():
    lines = []
    writer = LogWriter(lambda context, level, text: lines.append((level, text.decode())))
    must("SetLogger", b"SDK", writer, None)
    ada, grace = Participant("Ada Größe"), Participant("张三")
    user, key = draw_and_place(ada, grace)
    move(ada, grace)
    with tempfile.TemporaryDirectory() as folder:
        must("SavePage", *grace.page, os.path.join(folder, "页.png").encode(), b"")
        assert os.listdir(folder) == ["页.png"]
    erase(ada, grace, user, key)
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
    for name, (takes, gives) in SIGNATURES.items():
        call[name] = getattr(library, "Parchlet" + name)
        call[name].argtypes, call[name].restype = takes, gives
    hold_meeting()
    print("both saw the same page")
