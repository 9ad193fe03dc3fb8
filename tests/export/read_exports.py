#!/usr/bin/env python3
"""read_exports.py FORMAT BATCH EXAMPLES: exports projects and reads them with other programs' readers.

FORMAT is csv (pandas), gdf2 (a parser written from the rules of the standard), or vtk (the VTK
library and meshio, whichever are installed). What is read is compared with the project and model
files, which are read here without the program. Exit code 77: no reader is installed.
"""
import csv
import math
import os
import re
import shutil
import subprocess
import sys
import tempfile

Missing = -9.9e31
SkipOffset = 1000.0


def number(cell):
    value = float(cell) if cell not in ("", "*") else None
    return None if value is None or value <= Missing else value


def rows_of(path):
    """The rows of a project or model file as dictionaries, without what stands before its labels."""
    with open(path, encoding="latin-1") as file:
        lines = [line.rstrip("\r\n") for line in file]
    first = next(i for i, line in enumerate(lines) if line.startswith("Station,"))
    rows = csv.DictReader(line for line in lines[first:] if not line.startswith('"'))
    return [{name: number(cell) for name, cell in row.items()} for row in rows]


def soundings_of(base):
    """Windows and layers of each sounding of a project, in the order of the file."""
    soundings = {}
    for row in rows_of(base + ".std"):
        key = (row["Station"], row["TxStn"])
        sounding = soundings.setdefault(key, {"windows": [], "layers": [], "first": row})
        sounding["windows"].append(row)
    if os.path.exists(base + ".m1d"):
        for row in rows_of(base + ".m1d"):
            sounding = soundings[(row["Station"], row["TxStn"])]
            sounding["layers"].append(row)
    for sounding in soundings.values():
        sounding["layers"] = with_edges(sounding["layers"][1:], sounding["layers"][:1])
    return list(soundings.values())


def with_edges(layers, surface):
    """Adds to each layer the elevations of its edges; Zinv is that of its middle."""
    top = surface[0]["Zinv"] if surface else 0.0
    for layer in layers:
        layer["top"], layer["bottom"] = top, 2.0 * layer["Zinv"] - top
        top = layer["bottom"]
    return layers


def near(a, b, relative=2e-5, absolute=2e-3):
    return abs(a - b) <= max(absolute, relative * max(abs(a), abs(b)))


def same(what, found, wanted, **tolerance):
    if wanted is None or found is None:
        assert found is None and wanted is None, f"{what}: {found} where {wanted} is wanted"
    else:
        assert near(found, wanted, **tolerance), f"{what}: {found} where {wanted} is wanted"


Data = {"relative": 6e-5, "absolute": 0.0}


# ---------------------------------------------------------------------------------------- projects

def build_projects(batch, examples, work):
    """Projects of every array, inverted, and an odd one; their base paths."""
    surveys = ("inloop", "movingloop", "fixedloop", "coincident_avg")
    for name in (survey + ".avg" for survey in surveys):
        run(batch, "build", "--out", work, os.path.join(examples, name))
    bases = sorted(os.path.join(work, name[:-4]) for name in os.listdir(work)
                   if name.endswith(".std"))
    run(batch, "invert", *(base + ".std" for base in bases))
    return bases + [odd_project(bases[0], os.path.join(work, "odd"))]


def odd_project(base, odd):
    """The line with a name of commas, quotes and letters beyond ASCII, a sounding without model, one
    with fewer windows, one with values that fit no column, and one without a position."""
    with open(base + ".std", encoding="utf-8") as file:
        text = file.read()
    text = re.sub('LineName="[^"]*"', "LineName='S\u00fcd, \"Tal\" 4'", text)
    head, table = text.split("\nStation,", 1)
    rows = ("Station," + table).splitlines()
    labels, rows = rows[0].split(","), [row.split(",") for row in rows[1:]]
    stations = list(dict.fromkeys(row[0] for row in rows))
    for row in rows:
        if row[0] == stations[2]:
            row[labels.index("East")] = "123456789012"
            row[labels.index("TEMobs")] = "-1.00000E+30"
    rows = [row for i, row in enumerate(rows)
            if row[0] != stations[1] or rows[i - 1][0] != stations[1] or rows[i - 2][0] != stations[1]]
    with open(odd + ".std", "w", encoding="utf-8") as file:
        file.write(head + "\n" + ",".join(labels) + "\n")
        file.writelines(",".join(row) + "\n" for row in rows)
    with open(base + ".m1d", encoding="utf-8") as file, \
            open(odd + ".m1d", "w", encoding="utf-8") as out:
        out.writelines(line for line in file if not line.startswith(stations[3] + ","))
    return odd


def run(batch, *words):
    done = subprocess.run([batch, *words], stdout=subprocess.PIPE, text=True, check=False)
    assert done.returncode == 0, f"{words}: {done.stdout}"
    return done.stdout


# --------------------------------------------------------------------------------------------- CSV

def read_csv_tables(base):
    import pandas
    soundings = pandas.read_csv(base + "_soundings.csv")
    windows = pandas.read_csv(base + "_windows.csv")
    layers = pandas.read_csv(base + "_layers.csv")
    keys = ["line", "station", "transmitter", "sounding"]
    for table in (soundings, windows, layers):
        table.columns = [name.split(" [")[0] for name in table.columns]
        assert list(table.columns[:4]) == keys
    joined = windows.merge(soundings, on=keys, validate="many_to_one", suffixes=("", "_of_all"))
    assert len(joined) == len(windows), "each window joins one sounding"
    assert len(layers.merge(soundings, on=keys, validate="many_to_one")) == len(layers)
    return soundings, windows, layers


def given(value):
    return None if isinstance(value, float) and math.isnan(value) else value


def check_csv(base, wanted, odd):
    soundings, windows, layers = read_csv_tables(base)
    assert len(soundings) == len(wanted)
    if odd:
        assert set(soundings["line"]) == {'S\u00fcd, "Tal" 4'}
    for i, sounding in enumerate(wanted):
        row = soundings.iloc[i]
        for name, field in (("station", "Station"), ("easting", "East"), ("northing", "North"),
                            ("elevation", "Elevation"), ("transmitter", "TxStn")):
            same(name, float(row[name]), sounding["first"][field])
        own = windows[windows["sounding"] == i + 1]
        assert len(own) == len(sounding["windows"]) == row["nwindows"]
        for (_, cells), window in zip(own.iterrows(), sounding["windows"]):
            skipped = window["TEMerr"] > SkipOffset
            assert cells["flag"] == int(skipped)
            same("error", cells["error"], window["TEMerr"] % SkipOffset, absolute=1e-3)
            same("time", cells["time"], window["TWcenter"], **Data)
            same("width", cells["width"], window["TWwidth"], **Data)
            same("dbdt", cells["dbdt"], window["TEMobs"], **Data)
            same("calculated", given(cells["calculated"]), window["TEMcalc"], **Data)
        own = layers[layers["sounding"] == i + 1]
        assert len(own) == len(sounding["layers"]) == row["nlayers"]
        surface = sounding["first"]["Elevation"]
        for (_, cells), layer in zip(own.iterrows(), sounding["layers"]):
            same("top", surface - cells["top"], layer["top"], absolute=0.05)
            same("bottom", surface - cells["bottom"], layer["bottom"], absolute=0.05)
            same("elevation", cells["elevation"], layer["Zinv"], absolute=0.05)
            same("resistivity", cells["resistivity"], layer["ResInv"], **Data)
            same("error", given(cells["error"]), layer["Rerr"])
            same("background", given(cells["background"]), layer["Res0"], **Data)
            same("sensitivity", cells["sensitivity"], layer["Rsns"])


# ------------------------------------------------------------------------------------------- GDF2

class Field:
    def __init__(self, definition):
        parts = [part.strip() for part in definition.split(":", 2)]
        self.name = parts[0]
        assert re.fullmatch("[A-Za-z][A-Za-z0-9_]*", self.name), definition
        count, self.letter, width = re.fullmatch(r"(\d*)([AIFE])(\d+)(?:\.\d+)?", parts[1]).groups()
        self.count, self.width = int(count or 1), int(width)
        self.attributes = {}
        for part in (parts[2].split(",") if len(parts) > 2 else []):
            key, equals, value = part.partition("=")
            assert equals, definition
            self.attributes[key.strip()] = value.strip()
        self.null = self.attributes.get("NULL")

    def values(self, text):
        assert len(text) == self.count * self.width
        cells = [text[i:i + self.width] for i in range(0, len(text), self.width)]
        for cell in cells:
            assert cell[0] == " " and cell.strip(), f"{self.name}: '{cell}' fills its column"
        kind = int if self.letter == "I" else float
        return [None if cell.strip() == self.null else kind(cell) for cell in cells]


def read_definition(path):
    with open(path, "rb") as file:
        text = file.read().decode("ascii")
    assert "\r" not in text and text.endswith("\n")
    lines = text.splitlines()
    assert lines[0] == "DEFN   ST=RECD,RT=COMM;RT:A4;COMMENTS:A76"
    fields = []
    for i, line in enumerate(lines[1:], 1):
        start, definition = line.split(";", 1)
        assert start == f"DEFN {i} ST=RECD,RT=", line
        if definition == "END DEFN":
            assert i == len(lines) - 1
            return fields
        fields.append(Field(definition))
    raise AssertionError("no END DEFN")


def read_gdf2(base):
    fields = read_definition(base + ".dfn")
    assert len({field.name for field in fields}) == len(fields)
    length = sum(field.count * field.width for field in fields)
    with open(base + ".dat", "rb") as file:
        lines = file.read().decode("ascii").split("\n")
    assert lines.pop() == ""
    rows = []
    for line in lines:
        assert len(line) == length, f"{len(line)} columns where {length} are defined"
        row, at = {}, 0
        for field in fields:
            end = at + field.count * field.width
            values = field.values(line[at:end])
            row[field.name], at = values if field.count > 1 else values[0], end
        rows.append(row)
    return rows


def check_gdf2(base, wanted, odd):
    rows = read_gdf2(base)
    assert len(rows) == len(wanted)
    for i, (row, sounding) in enumerate(zip(rows, wanted)):
        assert row["sounding"] == i + 1
        assert row["nwindows"] == len(sounding["windows"])
        assert row["nlayers"] == len(sounding["layers"])
        same("station", row["station"], sounding["first"]["Station"])
        fits = abs(sounding["first"]["East"]) < 1e8
        same("easting", row["easting"], sounding["first"]["East"] if fits else None, absolute=0.006)
        same("northing", row["northing"], sounding["first"]["North"], absolute=0.006)
        for name in ("time", "width", "dbdt", "dbdt_error", "flag", "apparent_resistivity",
                     "calculated"):
            assert row[name][row["nwindows"]:] == [None] * (len(row[name]) - row["nwindows"])
        for name in ("top", "bottom", "resistivity", "resistivity_error", "sensitivity"):
            assert row[name][row["nlayers"]:] == [None] * (len(row[name]) - row["nlayers"])
        for k, window in enumerate(sounding["windows"]):
            same("time", row["time"][k], window["TWcenter"], **Data)
            same("dbdt", row["dbdt"][k], window["TEMobs"], **Data)
            same("calculated", row["calculated"][k], window["TEMcalc"], **Data)
            same("error", row["dbdt_error"][k], window["TEMerr"] % SkipOffset)
            assert row["flag"][k] == int(window["TEMerr"] > SkipOffset)
        for k, layer in enumerate(sounding["layers"]):
            same("resistivity", row["resistivity"][k], layer["ResInv"], **Data)
            same("bottom", sounding["first"]["Elevation"] - row["bottom"][k], layer["bottom"],
                 absolute=0.05)
    if odd:
        assert any(row["nlayers"] == 0 for row in rows)
        assert len({row["nwindows"] for row in rows}) == 2


# -------------------------------------------------------------------------------------------- VTK

def read_by_vtk(path):
    from vtkmodules.util.numpy_support import vtk_to_numpy
    from vtkmodules.vtkIOLegacy import vtkUnstructuredGridReader
    reader = vtkUnstructuredGridReader()
    reader.SetFileName(path)
    reader.ReadAllScalarsOn()
    reader.Update()
    grid = reader.GetOutput()
    points = vtk_to_numpy(grid.GetPoints().GetData())
    quads = []
    for i in range(grid.GetNumberOfCells()):
        assert grid.GetCellType(i) == 9
        cell = grid.GetCell(i)
        quads.append([cell.GetPointId(j) for j in range(4)])
    data = grid.GetCellData()
    names = [data.GetArrayName(i) for i in range(data.GetNumberOfArrays())]
    return points, quads, {name: vtk_to_numpy(data.GetArray(name)) for name in names}


def read_by_meshio(path):
    import meshio
    mesh = meshio.read(path, file_format="vtk")
    assert [block.type for block in mesh.cells] == ["quad"]
    return mesh.points, mesh.cells[0].data, {name: blocks[0].reshape(-1)
                                             for name, blocks in mesh.cell_data.items()}


def vtk_readers():
    readers = []
    for module, reader in (("vtkmodules.vtkIOLegacy", read_by_vtk), ("meshio", read_by_meshio)):
        try:
            __import__(module)
            readers.append(reader)
        except ImportError:
            pass
    return readers


def check_curtain(path, reader, wanted):
    points, quads, data = reader(path)
    assert set(data) == {"resistivity", "ln_error", "sensitivity", "sounding"}
    layers = [(i, layer) for i, sounding in enumerate(wanted) for layer in sounding["layers"]]
    assert len(quads) == len(layers)
    order = sorted(range(len(quads)), key=lambda c: (data["sounding"][c], -points[quads[c][0]][2]))
    for cell, (i, layer) in zip(order, layers):
        assert data["sounding"][cell] == i + 1
        same("resistivity", data["resistivity"][cell], layer["ResInv"], **Data)
        same("error", data["ln_error"][cell], math.log1p(layer["Rerr"] / 100.0), absolute=1e-5)
        same("sensitivity", data["sensitivity"][cell], layer["Rsns"])
        corners = [points[p] for p in quads[cell]]
        heights = [corner[2] for corner in corners]
        for height, edge in zip(heights, ("top", "top", "bottom", "bottom")):
            same(edge, height, layer[edge], absolute=0.05)
        assert tuple(corners[0][:2]) == tuple(corners[3][:2])
        assert tuple(corners[1][:2]) == tuple(corners[2][:2])


def check_vtk(base, wanted, odd):
    with open(base + ".vtk", encoding="utf-8") as file:
        head = [next(file).rstrip("\n") for _ in range(4)]
    assert head[0] == "# vtk DataFile Version 3.0" and head[2] == "ASCII"
    assert head[3] == "DATASET UNSTRUCTURED_GRID"
    for reader in vtk_readers():
        check_curtain(base + ".vtk", reader, wanted)


# ------------------------------------------------------------------------------------------------

def is_installed(form):
    if form == "vtk":
        return bool(vtk_readers())
    try:
        return form != "csv" or bool(__import__("pandas"))
    except ImportError:
        return False


def main():
    form, batch, examples = sys.argv[1:]
    if not is_installed(form):
        print(f"skipped: no reader of {form} is installed")
        return 77
    check = {"csv": check_csv, "gdf2": check_gdf2, "vtk": check_vtk}[form]
    work = tempfile.mkdtemp(prefix="keldrin-exports-")
    try:
        bases = build_projects(batch, examples, work)
        told = run(batch, "export", "--format", form, *(base + ".std" for base in bases))
        assert len(told.splitlines()) == len(bases), told
        for base in bases:
            check(base, soundings_of(base), base.endswith("odd"))
    finally:
        shutil.rmtree(work)
    print(f"{len(bases)} projects read as {form}")
    return 0


if __name__ == "__main__":
    sys.exit(main())
