"""Exchange files before independent judges: ezdxf reads and audits what is exported and writes what is imported,
LibreCAD shows the exploded export. Called with the program and the project's folder."""

import json
import math
import os
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

import ezdxf
from ezdxf.proxygraphic import ProxyGraphic

PROGRAM, PROJECT = Path(sys.argv[1]), Path(sys.argv[2])
VERSIONS = ["R12", "R2000", "R2004", "R2007", "R2010", "R2013", "R2018"]
CUSTOM = ("VQPLUMBPIPE", "VQPLUMBPIPEARROW")

# Prints every entity as a line of JSON: its type, layer, and the groups that are asked for.
LISTING = r"""
(defun json-number (x) (if (= (type x) 'INT) (itoa x) (rtos x 2 9)))
(defun json-text (s / out c) (setq out "")
  (foreach c (vl-string->list s)
    (setq out (strcat out (cond ((= c 34) "\\\"") ((= c 92) "\\\\") ((< c 32) " ") (t (chr c))))))
  (strcat "\"" out "\""))
(defun json (x)
  (cond ((= (type x) 'STR) (json-text x))
        ((numberp x) (json-number x))
        ((listp x) (strcat "[" (apply 'strcat (cons (json (car x)) (mapcar '(lambda (y) (strcat "," (json y))) (cdr x)))) "]"))
        (t "null")))
(defun listing (e / skipped out g)
  (setq skipped nil out "")
  (foreach g (entget e)
    (if (and (member (car g) '(0 1 2 3 8 10 11 12 13 40 41 42 50 62)) (cdr g))
      (setq out (strcat out (if (= out "") "" ",") "[" (itoa (car g)) "," (json (cdr g)) "]"))))
  (princ (strcat "ENTITY [" out "]\n")))
(defun list-all (/ e)
  (setvar "DIMZIN" 8)
  (setq e (entnext))
  (while e (listing e) (setq e (entnext e)))
  (princ))
"""


def run(*arguments, fails=False):
    with tempfile.TemporaryDirectory(prefix="veldrin-exchange-") as own:  # samples write where they run
        done = subprocess.run([PROGRAM, *map(str, arguments)], capture_output=True, timeout=100, cwd=own)
    text = done.stdout.decode("utf-8", "replace") + done.stderr.decode("utf-8", "replace")
    if (done.returncode != 0) != fails:
        raise AssertionError(f"veldrin {arguments} ended with {done.returncode}:\n{text}")
    return text


class ExchangeTest(unittest.TestCase):
    def setUp(self):
        self.folder = Path(tempfile.mkdtemp(prefix="veldrin-exchange-"))
        self.addCleanup(shutil.rmtree, self.folder)

    def export(self, source, *options):
        out = self.folder / f"{Path(source).stem}{len(list(self.folder.iterdir()))}.dxf"
        run("export", source, "-o", out, *options)
        return out

    def script(self, *forms):
        path = self.folder / "script.lsp"
        path.write_text(LISTING + "\n".join(forms), encoding="utf-8")
        return run("run", path)

    def read(self, dxf):
        """All entities that the program reads, each a list of groups."""
        text = self.script(f'(command "OPEN" "{dxf}")', "(list-all)")
        return [json.loads(line[7:]) for line in text.splitlines() if line.startswith("ENTITY ")], text

    def audited(self, path):
        document = ezdxf.readfile(path)
        auditor = document.audit()
        self.assertEqual([str(e.message) for e in auditor.errors + auditor.fixes], [], path)
        return document


class Out(ExchangeTest):
    def samples(self):
        return [PROJECT / "samples/restroom/restroom.lsp", *sorted((PROJECT / "samples/gallery").glob("*.lsp"))]

    def test_the_audit_finds_nothing(self):
        for sample in self.samples():
            for options in ([], ["--version", "R2018"], ["--explode"]):
                self.audited(self.export(sample, *options))

    def test_pipes_show_their_pictures(self):
        document = self.audited(self.export(self.samples()[0]))
        pipes = [e for e in document.modelspace() if e.dxftype() in CUSTOM]
        self.assertGreater(len(pipes), 70)
        kinds = {}
        for pipe in pipes:
            shown = list(ProxyGraphic(pipe.proxy_graphic, document).virtual_entities())
            self.assertTrue(shown, "a pipe without a picture")
            for piece in shown:
                kinds[piece.dxftype()] = kinds.get(piece.dxftype(), 0) + 1
        self.assertGreaterEqual(set(kinds), {"POLYLINE", "ARC", "CIRCLE", "TEXT"})

    def test_exploded_there_are_plain_entities_alone(self):
        document = self.audited(self.export(self.samples()[0], "--explode"))
        self.assertEqual([e for e in document.modelspace() if e.dxftype() in CUSTOM], [])
        self.assertEqual([c.dxf.name for c in document.classes if c.dxf.name.startswith("VQ")], [])
        labels = [e.text for e in document.modelspace().query("MTEXT")]
        self.assertIn('4" SAN', labels)

    def test_a_drawing_of_every_kind_keeps_its_values(self):
        out = self.folder / "kinds.dxf"
        self.script(
            '(setvar "CMDECHO" 0)',
            '(command "LAYER" "M" "WALLS" "C" 1 "" "LT" "HIDDEN" "" "LW" "0.5" "" "P" "N" "" "")',
            '(command "LAYER" "M" "TÜREN" "C" "T" "10,20,30" "" "LO" "TÜREN" "F" "WALLS" "")',
            '(setvar "CLAYER" "0")',
            '(command "STYLE" "NOTES" "simplex" 0 0.8 15 "N" "N")',
            '(command "LINE" "0,0" "1,2,3" "")',
            '(entmod (append (entget (entlast)) \'((62 . 3) (6 . "HIDDEN") (370 . 50) (48 . 2.0))))',
            '(command "TEXT" "1,1" 2 30 "Ø 15 ± %%c")',
            '(command "BLOCK" "VALVE" "1,1" (entlast) "")',
            '(command "INSERT" "VALVE" "5,5" 2 2 45)',
            '(regapp "SHOP")',
            '(entmod (append (entget (entlast)) \'((-3 ("SHOP" (1000 . "x y") (1070 . 7) (1040 . 1.5))))))',
            f'(command "DXFOUT" "{out}" "")')
        document = self.audited(out)
        self.assertEqual(document.dxfversion, "AC1015")
        self.assertEqual(document.header["$INSUNITS"], 1)
        walls, doors = document.layers.get("WALLS"), document.layers.get("TÜREN")
        self.assertEqual((walls.color, walls.dxf.linetype, walls.dxf.lineweight, walls.dxf.plot, walls.is_frozen()),
                         (1, "HIDDEN", 50, 0, True))
        self.assertEqual((doors.rgb, doors.is_locked()), ((10, 20, 30), True))
        self.assertEqual((document.styles.get("NOTES").dxf.width, document.styles.get("NOTES").dxf.oblique), (0.8, 15))
        line = document.modelspace().query("LINE")[0]
        self.assertEqual((tuple(line.dxf.end), line.dxf.color, line.dxf.lineweight, line.dxf.ltscale),
                         ((1, 2, 3), 3, 50, 2))
        insert = document.modelspace().query("INSERT")[0]
        self.assertEqual((insert.dxf.xscale, insert.dxf.rotation), (2, 45))
        self.assertEqual([tuple(t) for t in insert.get_xdata("SHOP")], [(1000, "x y"), (1070, 7), (1040, 1.5)])
        self.assertEqual(document.blocks.get("VALVE")[0].dxf.text, "Ø 15 ± %%c")

    def test_decimals_and_their_refusal(self):
        out = self.folder / "short.dxf"
        text = self.script('(command "LINE" "0.123456,7" "1,2" "")', f'(command "DXFOUT" "{out}" 3)',
                           f'(command "DXFOUT" "{out}" 17)')
        self.assertIn('"17" is no number from 0 to 16.', text)
        self.assertEqual(ezdxf.readfile(out).modelspace()[0].dxf.start.x, 0.123)

    @unittest.skipUnless(shutil.which("librecad") and shutil.which("pdftoppm"), "LibreCAD is not there")
    def test_librecad_shows_the_exploded_export(self):
        path = self.export(self.samples()[0], "--explode")
        environment = dict(os.environ, QT_QPA_PLATFORM="offscreen", HOME=str(self.folder))
        subprocess.run(["librecad", "dxf2pdf", "-a", path], env=environment, capture_output=True, timeout=100, check=True)
        subprocess.run(["pdftoppm", "-r", "40", "-gray", path.with_suffix(".pdf"), self.folder / "page"], check=True,
                       timeout=100)
        page = next(self.folder.glob("page*.pgm")).read_bytes()
        self.assertGreater(sum(1 for pixel in page[20:] if pixel < 128), 2000)


class Back(ExchangeTest):
    def test_pipes_survive_another_program(self):
        first = self.export(PROJECT / "samples/restroom/restroom.lsp")
        before, _ = self.read(first)
        document = ezdxf.readfile(first)
        for entity in document.modelspace().query("LINE"):
            entity.dxf.color = 5
        other = self.folder / "other.dxf"
        document.saveas(other)
        after, _ = self.read(other)
        of_pipes = lambda listing: [e for e in listing if e[0][1] in CUSTOM]
        self.assertGreater(len(of_pipes(before)), 70)
        self.assertEqual(of_pipes(before), of_pipes(after))
        again = self.folder / "again.dxf"
        self.script(f'(command "OPEN" "{other}")', f'(command "DXFOUT" "{again}" "")')
        pictures = lambda path: [e.proxy_graphic for e in ezdxf.readfile(path).modelspace() if e.dxftype() in CUSTOM]
        self.assertEqual(pictures(first), pictures(again))

    def test_what_another_program_has_changed_counts(self):
        first = self.export(PROJECT / "samples/restroom/restroom.lsp")
        text = first.read_text("cp1252")
        marker = text.index("100\nPlumbPipe\n")
        place = text.index(" 10\n", marker) + 4
        end = text.index("\n", place)
        first.write_text(text[:place] + "-1234.5" + text[end:], "cp1252")
        moved, _ = self.read(first)
        starts = [dict(map(tuple, ((g[0], tuple(g[1]) if isinstance(g[1], list) else g[1]) for g in e)))
                  for e in moved if e[0][1] == "VQPLUMBPIPE"]
        self.assertEqual(sum(1 for e in starts if e[10][0] == -1234.5), 1)
        self.assertIn('4" SAN', [e.get(1) for e in starts])

    def test_out_in_and_out_again_is_the_same(self):
        first = self.export(PROJECT / "samples/restroom/restroom.lsp")
        second, third = self.folder / "second.dxf", self.folder / "third.dxf"
        self.script(f'(command "OPEN" "{first}")', f'(command "DXFOUT" "{second}" "")')
        self.script(f'(command "OPEN" "{second}")', f'(command "DXFOUT" "{third}" "")')

        def pairs(path):
            lines = path.read_text("cp1252").split("\n")
            if not lines[-1]:
                lines.pop()
            return list(zip(map(int, lines[0::2]), lines[1::2]))

        def without_handles(path):
            return [p for p in pairs(path) if p[0] not in (5, 105, 320, 330, 340, 350, 360, 390)]

        # What a record in binary data points at is numbered anew: bytes that differ must mean the same layer or style.
        def names(path):
            kind, handle, found = "", "", {}
            for code, value in pairs(path):
                if code == 0:
                    kind, handle = value, ""
                elif code == 5:
                    handle = value
                elif code == 2 and handle and kind in ("LAYER", "STYLE", "LTYPE"):
                    found[handle] = (kind, value)
            return found

        def assert_same(one, other):
            names_one, names_other = names(one), names(other)
            here, there = without_handles(one), without_handles(other)
            self.assertEqual([p for p in here if p[0] != 1004], [p for p in there if p[0] != 1004])
            binary = [[value for code, value in side if code == 1004] for side in (here, there)]
            self.assertEqual(*map(len, binary))
            for chunk, again in zip(*binary):
                self.assertEqual(len(chunk), len(again))
                for at in range(0, len(chunk), 2):
                    byte, new = chunk[at : at + 2], again[at : at + 2]
                    if byte != new:
                        self.assertIn(byte, names_one)
                        self.assertEqual(names_one[byte], names_other.get(new))

        assert_same(first, second)
        assert_same(second, third)


class In(ExchangeTest):
    def drawing(self, version):
        document = ezdxf.new(version, setup=True)
        document.layers.add("ARCH-Wände" if version != "R12" else "ARCH-WAENDE", color=3, linetype="DASHED")
        layer = {"layer": document.layers.get("ARCH-Wände").dxf.name if version != "R12" else "ARCH-WAENDE"}
        space = document.modelspace()
        space.add_line((1, 2, 3), (4, 5, 6), dxfattribs=dict(layer, color=1))
        space.add_circle((10, 10), 2.5, dxfattribs=layer)
        space.add_arc((20, 10), 3, 30, 120, dxfattribs=layer)
        space.add_point((7, 8, 9), dxfattribs=layer)
        space.add_text("Küche 25°", dxfattribs=dict(layer, height=2)).set_placement((3, 4))
        space.add_polyline2d([(0, 0), (10, 0), (10, 10)], dxfattribs=layer)
        space.add_polyline3d([(0, 0, 0), (10, 0, 5), (10, 10, 9)], dxfattribs=layer)
        space.add_solid([(0, 0), (5, 0), (0, 5), (5, 5)], dxfattribs=layer)
        block = document.blocks.new("DOOR", base_point=(1, 1))
        block.add_line((0, 0), (1, 0))
        block.add_attdef("TAG", (0, 0), dxfattribs={"height": 1})
        reference = space.add_blockref("DOOR", (30, 30), dxfattribs=dict(layer, xscale=2, yscale=2, rotation=90))
        reference.add_attrib("TAG", "D-101", (30, 31))
        dimension = space.add_linear_dim(base=(0, -5), p1=(0, 0), p2=(10, 0), dxfattribs=layer)
        dimension.render()
        if version != "R12":
            space.add_ellipse((40, 40), (5, 0), 0.5, 0, math.pi, dxfattribs=layer)
            space.add_lwpolyline([(0, 0, 0, 0, 0.5), (5, 0, 0, 0, 0), (5, 5, 0, 0, 0)], dxfattribs=dict(layer, flags=1))
            space.add_mtext("line one\\Pline two", dxfattribs=dict(layer, char_height=2, insert=(50, 50)))
            space.add_spline([(0, 0), (5, 5), (10, 0)], dxfattribs=layer)
            space.add_open_spline([(0, 0), (3, 6), (6, 0), (9, 6)], dxfattribs=layer)
            hatch = space.add_hatch(color=2, dxfattribs=layer)
            hatch.paths.add_polyline_path([(0, 0), (10, 0), (10, 10), (0, 10)], is_closed=True)
            edges = hatch.paths.add_edge_path()
            edges.add_arc((5, 5), 2, 0, 360)
            hatch.set_pattern_fill("ANSI31", scale=0.5)
            space.add_3dface([(0, 0, 0), (1, 0, 1), (1, 1, 0), (0, 1, 0)], dxfattribs=layer)
            space.add_leader([(0, 0), (5, 5), (8, 5)], dxfattribs=layer)
        path = self.folder / f"{version}.dxf"
        document.saveas(path)
        return path, document

    WANTED = {
        "LINE": {10: [1, 2, 3], 11: [4, 5, 6], 62: 1},
        "CIRCLE": {10: [10, 10, 0], 40: 2.5},
        "ARC": {10: [20, 10, 0], 40: 3, 50: math.radians(30)},
        "POINT": {10: [7, 8, 9]},
        "TEXT": {1: "Küche 25°", 10: [3, 4, 0], 40: 2},
        "SOLID": {10: [0, 0, 0], 13: [5, 5, 0]},
        "INSERT": {2: "DOOR", 10: [30, 30, 0], 41: 2, 50: math.radians(90)},
        "ATTRIB": {1: "D-101", 2: "TAG"},
        "DIMENSION": {13: [0, 0, 0]},
        "ELLIPSE": {10: [40, 40, 0], 11: [5, 0, 0], 40: 0.5},
        "MTEXT": {1: "line one\\Pline two", 10: [50, 50, 0]},
        "3DFACE": {11: [1, 0, 1]},
        "HATCH": {2: "ANSI31"},
    }

    def check(self, version, entities, said):
        by_type = {}
        for groups in entities:
            by_type.setdefault(groups[0][1], []).append(groups)
        for kind, wanted in self.WANTED.items():
            if version == "R12" and kind in ("ELLIPSE", "MTEXT", "3DFACE", "HATCH"):
                continue
            self.assertIn(kind, by_type, f"{version}: {said}")
            for code, value in wanted.items():
                read = next(g[1] for g in by_type[kind][0] if g[0] == code)
                for a, b in zip(*(v if isinstance(v, list) else [v] for v in (read, value))):
                    same = math.isclose(a, b, abs_tol=1e-6) if isinstance(a, (int, float)) else a == b
                    self.assertTrue(same, f"{version} {kind} {code}: {read} instead of {value}")
        self.assertEqual(len(by_type["POLYLINE"]), 2)
        self.assertIn([10, [10, 0, 5]], by_type["POLYLINE"][1])
        if version != "R12":
            self.assertEqual([len(by_type[k]) for k in ("SPLINE", "LWPOLYLINE", "LEADER")], [2, 1, 1])

    def test_every_kind_in_every_version(self):
        for version in VERSIONS:
            path, document = self.drawing(version)
            entities, said = self.read(path)
            self.check(version, entities, said)
            self.assertNotIn("Left out", said)
            self.assertNotIn("line ", said.replace("line one", "").replace("line two", ""))
            # What came in goes out again, and the other program reads it.
            again = self.folder / f"again-{version}.dxf"
            in_space = lambda d: [tuple(v.dxf.location) for p in d.modelspace().query("POLYLINE")
                                  if p.is_3d_polyline for v in p.vertices]
            self.script(f'(command "OPEN" "{path}")', f'(command "DXFOUT" "{again}" "")')
            kinds = sorted(e.dxftype() for e in document.modelspace())
            self.assertEqual(sorted(e.dxftype() for e in self.audited(again).modelspace()), kinds, version)
            self.assertEqual(in_space(ezdxf.readfile(again)), in_space(document))

    def test_dimensions_and_hatches_are_drawn_and_moved(self):
        path, _ = self.drawing("R2010")
        text = self.script(
            f'(command "OPEN" "{path}")',
            '(defun shown (kind / s) (setq s (ssget "X" (list (cons 0 kind)))) (vd-graphics (ssname s 0)))',
            '(foreach kind \'("DIMENSION" "HATCH" "ELLIPSE" "SPLINE" "SOLID" "3DFACE")',
            '  (princ (strcat "SHOWN " kind " " (itoa (length (shown kind))) "\\n")))',
            '(command "MOVE" "ALL" "" "0,0" "100,0")',
            '(setq e (ssname (ssget "X" \'((0 . "HATCH"))) 0))',
            '(princ "MOVED ") (prin1 (mapcar \'car (car (mapcar \'cddddr (vd-graphics e)))))')
        counts = dict(line.split()[1:] for line in text.splitlines() if line.startswith("SHOWN"))
        self.assertTrue(all(int(n) > 0 for n in counts.values()), counts)
        self.assertEqual(len(counts), 6)
        self.assertIn("MOVED (100.0 110.0 110.0 100.0 100.0)", text)
        self.assertIn("cannot be edited", text)  # the leader, of which nothing is known

    def test_binary_files_and_code_pages(self):
        path, document = self.drawing("R2000")
        binary = self.folder / "binary.dxf"
        document.saveas(binary, fmt="bin")
        self.assertEqual(self.read(binary)[0], self.read(path)[0])
        plain = "  0\nSECTION\n  2\nHEADER\n  9\n$ACADVER\n  1\nAC1009\n  9\n$DWGCODEPAGE\n  3\n%s\n  0\nENDSEC\n" \
                "  0\nSECTION\n  2\nENTITIES\n  0\nTEXT\n  8\n0\n 10\n0\n 20\n0\n 40\n1\n  1\n%s\n  0\nENDSEC\n  0\nEOF\n"
        for page, codec, sign in (("ANSI_1251", "cp1251", "Труба"), ("ANSI_932", "cp932", "配管"), ("DOS850", "cp850", "Küche")):
            path = self.folder / f"{page}.dxf"
            path.write_bytes((plain % (page, sign)).encode(codec))
            self.assertIn([1, sign], self.read(path)[0][0])
        path.write_bytes((plain % ("ANSI_1252", "\\U+00D8 \\M+194E0 ^ ^I")).encode("ascii"))
        self.assertIn([1, "Ø 扉 ^ "], self.read(path)[0][0])

    def test_errors_have_their_lines_and_the_rest_is_read(self):
        path, _ = self.drawing("R2000")
        lines = path.read_text("cp1252").split("\n")
        at = next(i for i, line in enumerate(lines) if line == "CIRCLE")
        radius = next(i for i in range(at, len(lines)) if lines[i].strip() == "40") + 1
        lines[radius] = "wide"
        path.write_text("\n".join(lines), "cp1252")
        entities, said = self.read(path)
        self.assertIn(f"line {radius}: a number was expected in CIRCLE.", said)
        self.assertIn("Left out: 1 CIRCLE", said)
        self.assertTrue(any(e[0][1] == "ARC" for e in entities))
        path.write_text("\n".join(lines[: radius - 1]), "cp1252")
        self.assertIn("the file ends before its end mark", self.read(path)[1])
        path.write_text("just a note\nof nothing\n")
        self.assertIn("it is not a DXF file", self.script(f'(command "OPEN" "{path}")'))

    def test_importing_keeps_what_the_drawing_has(self):
        path, _ = self.drawing("R2010")
        text = self.script(
            '(command "LAYER" "N" "ARCH-Wände" "C" 6 "ARCH-Wände" "")', '(setvar "INSUNITS" 4)',
            f'(command "DXFIN" "{path}")',
            '(princ "GOT ") (prin1 (list (cdr (assoc 62 (tblsearch "LAYER" "ARCH-Wände"))) (getvar "INSUNITS")',
            '  (not (tblsearch "BLOCK" "DOOR")) (not (ssget "X" \'((0 . "HATCH"))))))',
            '(command "U") (princ "LEFT ") (prin1 (entnext))')
        self.assertIn("GOT (6 4 nil nil)", text)
        self.assertIn("LEFT nil", text)


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]])
