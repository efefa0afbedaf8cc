"""The timeline: zoom and scroll, four drawn tracks, two sets of mouths."""

from program import CONTROLS, SCROLL_BAR, TRACKS

TRACK_COLORS = {"yellow": (255, 255, 192), "red": (255, 192, 192), "green": (192, 255, 192),
                "blue": (192, 192, 255)}
FRAMES = 71


def zoom_and_scroll(tour, sheet):
    sheet.go_home()
    sheet.click_row(8)
    sheet.desk.settle()
    boxes = [sheet.frame_box()]
    for _ in range(4):
        sheet.press("zoom in")
        sheet.desk.settle()
    boxes.append(sheet.frame_box())
    tour.portrait("11-zoomed", "the timeline at 200 percent", sheet.main)
    left, top, right, bottom = sheet.area(SCROLL_BAR)
    middle = (top + bottom) // 2
    sheet.desk.drag([(left + 60, middle), (left + 120, middle), (left + 240, middle), (right - 30, middle)])
    sheet.desk.settle()
    boxes.append(sheet.frame_box())
    tour.portrait("12-scrolled", "scrolled to the end", sheet.main)
    for _ in range(4):
        sheet.press("zoom out")
        sheet.desk.settle()
    boxes.append(sheet.frame_box())
    tour.note(boxes=boxes)


def stroke(sheet, value):
    """Draws value(frame) for the frames 4 to 60 in one stroke of the mouse."""
    left, top, right, _ = sheet.area(TRACKS)
    width = right - left
    points = [(left + round(frame * width / FRAMES), top + value(frame)) for frame in range(4, 61)]
    # The press alone writes nothing: the first point comes twice.
    sheet.desk.drag([points[0], (points[0][0] + 1, points[0][1]), *points])
    sheet.desk.point(*sheet.at(*CONTROLS["lock"]))
    sheet.desk.settle()


def yellow_value(frame):
    return 14 + abs(frame % 20 - 10)


def red_value(frame):
    return 58 - frame // 3


def draw_tracks(tour, sheet):
    looks = {}

    def look(moment):
        sheet.desk.settle()
        looks[moment] = {name: sheet.colored(color) for name, color in TRACK_COLORS.items()}

    sheet.press("draw")
    look("flat")
    stroke(sheet, yellow_value)
    look("yellow drawn")
    sheet.press("red")
    stroke(sheet, red_value)
    look("red drawn")
    tour.portrait("13-tracks", "two tracks drawn", sheet.main)
    sheet.press("show blue")
    sheet.press("show yellow")
    look("blue and yellow hidden")
    tour.portrait("14-hidden", "the blue and the yellow track hidden", sheet.main)
    sheet.press("show yellow")
    sheet.press("undo")
    look("red undone")
    stroke(sheet, red_value)
    sheet.press("clear")
    look("cleared")
    tour.portrait("15-cleared", "all tracks cleared", sheet.main)
    sheet.press("undo")
    look("clear and stroke undone")
    stroke(sheet, red_value)
    sheet.press("draw")
    tour.note(tracks=looks)


def change_mouths(tour, sheet):
    """The same row in both sets: Sketch stands on mid grey, Cartoon on white."""
    sheet.go_home()
    sheet.click_row(3)
    sheet.desk.settle()
    tour.note(sketch_ground=mouth_ground(sheet))
    tour.portrait("16-sketch", "the mouth of the row, Sketch", sheet.main)
    sheet.choose("Cartoon")
    sheet.desk.settle()
    tour.note(cartoon_ground=mouth_ground(sheet))
    tour.portrait("17-cartoon", "the same mouth, Cartoon", sheet.main)


def mouth_ground(sheet):
    return sheet.desk.see().getpixel(sheet.at(4 + 3, 32 + 3))
