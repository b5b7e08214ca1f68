"""A plain reader of text DXF files, for comparing what a program did to one tag by tag."""


def read_tags(path):
    """[(code, value as bytes)] of the whole file."""
    lines = path.read_bytes().split(b"\n")
    lines = [line[:-1] if line.endswith(b"\r") else line for line in lines]
    if lines and lines[-1] == b"":
        lines.pop()
    return [(int(lines[i]), lines[i + 1]) for i in range(0, len(lines) - 1, 2)]


def sections(tags):
    """{name: tags between SECTION and ENDSEC}."""
    found, name, start = {}, None, 0
    for i, tag in enumerate(tags):
        if tag == (0, b"SECTION"):
            name, start = tags[i + 1][1].decode(), i + 2
        if tag == (0, b"ENDSEC") and name:
            found[name], name = tags[start:i], None
    return found


def records(tags):
    """The tags cut at every group 0."""
    out = []
    for tag in tags:
        if tag[0] == 0:
            out.append([])
        if out:
            out[-1].append(tag)
    return out


def value(record, code):
    """First value of a group code as text, or None."""
    return next((v.decode("utf-8", "replace") for c, v in record if c == code), None)


def entities(path):
    """Records of the ENTITIES section, with those of polyline vertices and attributes in order."""
    return records(sections(read_tags(path))["ENTITIES"])


def on_layer(records_, layer):
    return [r for r in records_ if (value(r, 8) or "").lower() == layer.lower()]
