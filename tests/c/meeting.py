#!/usr/bin/env python3
"""Two participants hold a meeting through the C interface, by Python's foreign functions alone.

Usage: meeting.py LIBRARY
"""
import ctypes as c
import os
import struct
import sys
import tempfile
import unittest
import zlib

YES, NO, BAD_ARGUMENT = 1, 0, -1
DRAWING = 1
PATH, RECTANGLE, PNG = 0, 15, 22
WIDTH, HEIGHT = 160, 100
WHITE, RED, GREEN, BLUE = 0xFFFFFFFF, 0xFFFF0000, 0xFF00FF00, 0xFF0000FF
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

TEXT, HANDLE, INT, COLOR, SIZE = c.c_char_p, c.c_void_p, c.c_int32, c.c_uint32, c.c_size_t
# Operations by name: what they take, and what they give where that is no code.
SIGNATURES = {
    "Version": ((), TEXT),
    "SetLogger": ((TEXT, LogWriter, HANDLE), INT),
    "TextsNew": ((), HANDLE),
    "TextsFree": ((HANDLE,), None),
    "TextsCount": ((HANDLE,), SIZE),
    "TextsAt": ((HANDLE, SIZE), TEXT),
    "EngineNew": ((), HANDLE),
    "EngineFree": ((HANDLE,), None),
    "Init": ((HANDLE,), INT),
    "SetUserInfo": ((HANDLE, TEXT, TEXT, TEXT), INT),
    "SetPen": ((HANDLE, COLOR, COLOR), INT),
    "SetAnnotationType": ((HANDLE, INT, INT), INT),
    "NewDoc": ((HANDLE, TEXT, TEXT), INT),
    "NewPage": ((HANDLE, TEXT, TEXT, TEXT, HANDLE, c.POINTER(PageInfo)), INT),
    "StartDrawing": ((HANDLE, TEXT, TEXT, INT, INT), INT),
    "MoveDrawing": ((HANDLE, INT, INT), INT),
    "EndDrawing": ((HANDLE,), INT),
    "GetCurrentAnnotationInfo": ((HANDLE, HANDLE, HANDLE, HANDLE), INT),
    "StartSelecting": ((HANDLE, TEXT, TEXT, TEXT, TEXT, INT, INT), INT),
    "MoveSelecting": ((HANDLE, INT, INT), INT),
    "EndSelecting": ((HANDLE,), INT),
    "GetSelectedAnnotations": ((HANDLE, TEXT, TEXT, c.POINTER(HANDLE), SIZE), INT),
    "EraseSelectedAnnotations": ((HANDLE, TEXT, TEXT, HANDLE), INT),
    "EraseAnnotations": ((HANDLE, TEXT, TEXT, TEXT, TEXT, c.POINTER(Pixel), SIZE, HANDLE), INT),
    "EraseAnnotation": ((HANDLE, TEXT, TEXT, TEXT, TEXT), INT),
    "EraseAnnotationFromRemote": ((HANDLE, TEXT, TEXT, TEXT, TEXT), INT),
    "AddAnnotationFromRemote": ((HANDLE, TEXT, TEXT, HANDLE), INT),
    "GetAnnotation": ((HANDLE, TEXT, TEXT, TEXT, TEXT), HANDLE),
    "GetLocalAnnotation": ((HANDLE, TEXT, TEXT, TEXT), HANDLE),
    "AddPictureFromStream": ((HANDLE, TEXT, TEXT, TEXT, SIZE, TEXT, INT), HANDLE),
    "SavePage": ((HANDLE, TEXT, TEXT, TEXT, TEXT), INT),
    "MarkNew": ((), HANDLE),
    "MarkFree": ((HANDLE,), None),
    "MarkInit": ((HANDLE, c.POINTER(Pen), INT, INT, TEXT, TEXT, TEXT), INT),
    "MarkSetAnnotationId": ((HANDLE, TEXT), INT),
    "MarkGetAnnotationId": ((HANDLE, HANDLE), INT),
    "MarkGetUser": ((HANDLE, HANDLE, HANDLE, HANDLE), INT),
    "MarkGetPen": ((HANDLE, c.POINTER(Pen)), INT),
    "MarkGetType": ((HANDLE, c.POINTER(INT), c.POINTER(INT)), INT),
    "MarkGetPictureProperty": ((HANDLE, HANDLE), INT),
    "MarkSetOrder": ((HANDLE, INT), INT),
    "MarkSetSubModelIndex": ((HANDLE, INT), INT),
    "MarkInsertPoints": ((HANDLE, COLOR, c.POINTER(Point), SIZE), INT),
    "MarkGetSubModels": ((HANDLE, c.POINTER(COLOR), SIZE, c.POINTER(SIZE)), INT),
    "MarkGetPoints": ((HANDLE, COLOR, c.POINTER(Point), SIZE, c.POINTER(SIZE)), INT),
    "MarkErase": ((HANDLE, INT), INT),
    "MarkIsErased": ((HANDLE,), INT),
    "MarkSetPictureFromStream": ((HANDLE, TEXT, SIZE, TEXT), INT),
    "WindowNew": ((c.POINTER(Rect),), HANDLE),
    "WindowFree": ((HANDLE,), None),
    "WindowHandle": ((HANDLE,), HANDLE),
    "WindowPresentCount": ((HANDLE,), c.c_uint64),
    "WindowWaitForPresent": ((HANDLE, c.c_uint64, INT), INT),
    "WindowCopyFrame": ((HANDLE, c.POINTER(COLOR), SIZE, c.POINTER(INT), c.POINTER(INT)), INT),
}


class Library:
    """The operations, without their prefix."""

    def __init__(self, path):
        loaded = c.CDLL(path)
        for name, (takes, gives) in SIGNATURES.items():
            operation = getattr(loaded, "Parchlet" + name)
            operation.argtypes, operation.restype = takes, gives
            setattr(self, name, operation)


parchlet = None  # the Library, once its path is known


class Texts:
    """A list for results, freed with its block."""

    def __enter__(self):
        self.handle = parchlet.TextsNew()
        return self

    def __exit__(self, *error):
        parchlet.TextsFree(self.handle)

    def all(self):
        count = parchlet.TextsCount(self.handle)
        return [parchlet.TextsAt(self.handle, index).decode() for index in range(count)]


def png(width, height, color_at):
    """The bytes of a picture, by a writer that knows nothing of the library."""
    def chunk(kind, data):
        body = kind + data
        return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body))
    rows = b"".join(b"\0" + b"".join(struct.pack(">I", color_at(x, y))[1:] for x in range(width))
                    for y in range(height))
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0))
            + chunk(b"IDAT", zlib.compress(rows)) + chunk(b"IEND", b""))


def read_bmp(path):
    """The pixels of a 24-bit BMP file, top row first."""
    with open(path, "rb") as file:
        data = file.read()
    start, = struct.unpack_from("<I", data, 10)
    width, height, _, bits = struct.unpack_from("<iiHH", data, 18)
    assert bits == 24 and height > 0
    stride = (3 * width + 3) // 4 * 4
    rows = [data[start + stride * y:start + stride * y + 3 * width] for y in range(height)]
    return [0xFF000000 | int.from_bytes(row[3 * x:3 * x + 3], "little")
            for row in reversed(rows) for x in range(width)]


def read_points(mark):
    """All points of a mark, sub-model by sub-model."""
    count = SIZE()
    assert parchlet.MarkGetSubModels(mark, None, 0, c.byref(count)) == YES
    numbers = (COLOR * count.value)()
    assert parchlet.MarkGetSubModels(mark, numbers, len(numbers), c.byref(count)) == YES
    every = []
    for number in numbers:
        assert parchlet.MarkGetPoints(mark, number, None, 0, c.byref(count)) == YES
        points = (Point * count.value)()
        assert parchlet.MarkGetPoints(mark, number, points, len(points), None) == YES
        every += [(p.x, p.y, p.xRatio, p.yRatio) for p in points]
    return every


def read_mark(mark, order, picture=b""):
    """The messages that tell of a mark, as plain values."""
    pen, kind, sub_kind = Pen(), INT(), INT()
    assert parchlet.MarkGetPen(mark, c.byref(pen)) == YES
    assert parchlet.MarkGetType(mark, c.byref(kind), c.byref(sub_kind)) == YES
    with Texts() as key, Texts() as user, Texts() as user_sub, Texts() as nickname, Texts() as note:
        assert parchlet.MarkGetAnnotationId(mark, key.handle) == YES
        assert parchlet.MarkGetUser(mark, user.handle, user_sub.handle, nickname.handle) == YES
        assert parchlet.MarkGetPictureProperty(mark, note.handle) == YES
        texts = [text.all()[0] for text in (key, user, user_sub, nickname, note)]
    points = read_points(mark)
    return [{"texts": texts, "pen": (pen.color, pen.width, pen.fill), "order": order,
             "type": (kind.value, sub_kind.value), "picture": picture, "index": index,
             "points": points[first:first + FRAGMENT]}
            for index, first in enumerate(range(0, len(points), FRAGMENT))]


class Participant:
    def __init__(self, name):
        self.name = name
        self.window = parchlet.WindowNew(c.byref(Rect(0, 0, WIDTH, HEIGHT)))
        self.engine = parchlet.EngineNew()
        self.must("SetUserInfo", name.encode(), b"desk", name.encode())
        self.must("Init")
        self.must("NewDoc", name.encode(), b"doc")
        info = PageInfo(0, 0, WIDTH, HEIGHT, 0, Rect(0, 0, WIDTH, HEIGHT), 0)
        self.must("NewPage", b"doc", b"page", name.encode(), parchlet.WindowHandle(self.window),
                  c.byref(info))

    def leave(self):
        parchlet.EngineFree(self.engine)
        parchlet.WindowFree(self.window)

    def call(self, operation, *arguments):
        return getattr(parchlet, operation)(self.engine, *arguments)

    def must(self, operation, *arguments):
        result = self.call(operation, *arguments)
        assert result == YES, (operation, result)

    def on_page(self, operation, *arguments):
        return self.call(operation, b"doc", b"page", *arguments)

    def draw(self, kind, color, width, points):
        """Draws a mark; gives it, borrowed from the page."""
        self.must("SetPen", color, width)
        self.must("SetAnnotationType", DRAWING, kind)
        assert self.on_page("StartDrawing", *points[0]) == YES
        for point in points[1:]:
            self.must("MoveDrawing", *point)
        with Texts() as key:
            self.must("GetCurrentAnnotationInfo", key.handle, None, None)
            self.must("EndDrawing")
            return self.on_page("GetLocalAnnotation", key.all()[0].encode())

    def receive(self, message):
        mark = parchlet.MarkNew()
        key, user, user_sub, nickname, note = [text.encode() for text in message["texts"]]
        points = [Point(*point) for point in message["points"]]
        parchlet.MarkInit(mark, c.byref(Pen(*message["pen"])), *message["type"], user, user_sub,
                          nickname)
        parchlet.MarkSetAnnotationId(mark, key)
        parchlet.MarkSetOrder(mark, message["order"])
        parchlet.MarkSetSubModelIndex(mark, message["index"])
        parchlet.MarkInsertPoints(mark, 0, (Point * len(points))(*points), len(points))
        if message["picture"]:
            picture = message["picture"]
            assert parchlet.MarkSetPictureFromStream(mark, picture, len(picture), note) == YES
        assert self.on_page("AddAnnotationFromRemote", mark) == YES
        parchlet.MarkFree(mark)

    def see(self):
        """The pixels of everything done so far."""
        # The frame under way may be older than the last call; the one after it is not.
        frame = parchlet.WindowPresentCount(self.window) + 2
        assert parchlet.WindowWaitForPresent(self.window, frame, 60_000) == YES
        pixels, width, height = (COLOR * (WIDTH * HEIGHT))(), INT(), INT()
        assert parchlet.WindowCopyFrame(self.window, pixels, len(pixels), c.byref(width),
                                        c.byref(height)) == YES
        assert (width.value, height.value) == (WIDTH, HEIGHT)
        return list(pixels)


class Meeting(unittest.TestCase):
    def setUp(self):
        self.ada, self.grace = Participant("Ada Größe"), Participant("grace")
        self.order = 0

    def tearDown(self):
        self.ada.leave()
        self.grace.leave()

    def relay(self, mark, turn=lambda messages: messages, picture=b""):
        self.order += 1
        messages = read_mark(mark, self.order, picture)
        for one in (self.grace, self.ada):
            for message in turn(messages):
                one.receive(message)
        return messages

    def both_see(self, **colors):
        """Both see the same page, and at "x_y" the colour given."""
        seen = self.ada.see()
        self.assertTrue(seen == self.grace.see(), "the pages differ")
        for place, color in colors.items():
            x, y = map(int, place.strip("at").split("_"))
            self.assertEqual(f"{seen[y * WIDTH + x]:08X}", f"{color:08X}", place)
        return seen

    def draw_a_path(self):
        """A line of many points from (10, 50) to (150, 50)."""
        mark = self.ada.draw(PATH, BLUE, 6, [(x, 50) for x in range(10, 151, 2)])
        return self.relay(mark)

    def test_a_path_that_comes_in_fragments_backwards_and_twice_is_one_line(self):
        mark = self.ada.draw(PATH, BLUE, 6, [(x, 50) for x in range(10, 151, 2)])
        messages = self.relay(mark, lambda sent: list(reversed(sent)) + sent)
        self.assertGreater(len(messages), 3)
        self.both_see(at80_50=BLUE, at12_50=BLUE, at148_50=BLUE, at80_60=WHITE)
        key, user = (text.encode() for text in messages[0]["texts"][:2])
        seen = self.grace.on_page("GetAnnotation", user, key)
        self.assertEqual(read_points(seen), sum((m["points"] for m in messages), []))

    def test_marks_lie_in_their_order_whoever_drew_them(self):
        line = self.ada.draw(PATH, BLUE, 6, [(10, 50), (150, 50)])
        self.relay(self.grace.draw(RECTANGLE, GREEN, 6, [(60, 20), (100, 80)]))
        self.relay(line)  # drawn first and confirmed last
        self.both_see(at60_50=BLUE, at60_30=GREEN, at30_50=BLUE)

    def test_a_moved_mark_moves_for_all(self):
        self.draw_a_path()
        self.assertEqual(self.ada.on_page("StartSelecting", b"", b"", 0, 0), YES)
        self.assertEqual(self.ada.call("MoveSelecting", WIDTH, HEIGHT), NO)
        self.ada.call("EndSelecting")
        selected = (HANDLE * 1)()
        self.assertEqual(self.ada.on_page("GetSelectedAnnotations", selected, 1), 1)
        self.assertEqual(self.ada.on_page("StartSelecting", b"", b"", 80, 50), YES)
        self.assertEqual(self.ada.call("MoveSelecting", 80, 20), YES)
        self.assertEqual(self.ada.call("EndSelecting"), YES)
        self.relay(selected[0])
        with Texts() as dropped:
            self.assertEqual(self.ada.on_page("EraseSelectedAnnotations", dropped.handle), 1)
            self.assertEqual(len(dropped.all()), 1)
        self.both_see(at80_20=BLUE, at80_50=WHITE)

    def test_an_erased_mark_is_gone_for_all_and_can_be_restored(self):
        texts = [text.encode() for text in self.draw_a_path()[0]["texts"]]
        self.both_see(at80_50=BLUE)
        way = (Pixel * 2)(Pixel(80, 30), Pixel(80, 70))
        with Texts() as hit:
            self.assertEqual(
                self.grace.on_page("EraseAnnotations", b"", b"", way, 2, hit.handle), 1)
            self.assertEqual(hit.all(), [texts[0].decode()])
        self.assertEqual(self.grace.on_page("EraseAnnotation", texts[1], texts[0]), YES)
        self.assertEqual(self.ada.on_page("EraseAnnotationFromRemote", texts[1], texts[0]), YES)
        self.both_see(at80_50=WHITE)
        for one in (self.ada, self.grace):
            mark = one.on_page("GetAnnotation", texts[1], texts[0])
            self.assertEqual(parchlet.MarkIsErased(mark), YES)
            self.assertEqual(parchlet.MarkErase(mark, 0), YES)
        self.both_see(at80_50=BLUE)

    def test_a_picture_travels_and_is_exported(self):
        picture = png(40, 30, lambda x, y: RED if x < 20 else GREEN)
        mark = self.ada.on_page("AddPictureFromStream", picture, len(picture), "нота".encode(), 0)
        self.relay(mark, picture=picture)
        messages = self.draw_a_path()
        self.assertEqual(messages[0]["order"], 2)
        seen = self.both_see(at5_5=RED, at35_5=GREEN, at80_5=WHITE, at80_50=BLUE)
        with tempfile.TemporaryDirectory() as folder:
            path = os.path.join(folder, "стр.bmp")
            self.assertEqual(self.grace.on_page("SavePage", path.encode(), b""), YES)
            self.assertTrue(read_bmp(path) == seen, "the file differs from the page")
            self.assertEqual(self.grace.on_page("SavePage", (folder + "/none/x.png").encode(), b""),
                             NO)
        remote = self.grace.on_page("GetAnnotation", "Ada Größe".encode(),
                                    read_mark(mark, 0)[0]["texts"][0].encode())
        message = read_mark(remote, 0)[0]
        self.assertEqual(message["texts"][1:], ["Ada Größe", "desk", "Ada Größe", "нота"])
        self.assertEqual(message["type"], (3, PNG))

    def test_failures_are_codes_and_reach_the_logger(self):
        lines = []
        writer = LogWriter(lambda context, level, line: lines.append((level, line.decode())))
        self.assertEqual(parchlet.SetLogger(b"SDK", writer, None), YES)
        self.assertEqual(self.ada.call("StartDrawing", "нет".encode(), b"page", 1, 1), NO)
        parchlet.SetLogger(b"SDK", LogWriter(), None)
        self.assertEqual([level for level, _ in lines], [0])
        self.assertIn("нет", lines[0][1])
        self.assertEqual(parchlet.Init(None), BAD_ARGUMENT)


if __name__ == "__main__":
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    parchlet = Library(sys.argv.pop(1))
    print("version", parchlet.Version().decode())
    unittest.main()
