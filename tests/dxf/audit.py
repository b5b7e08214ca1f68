"""Loads drawings with an independent reader and says what it finds wrong with them.

usage: audit.py FILE ...; prints one line a fault, exit status 1 when there was any, 77 without ezdxf.
"""
import sys

try:
    import ezdxf
except ImportError:
    sys.exit(77)

faults = 0
for path in sys.argv[1:]:
    try:
        doc = ezdxf.readfile(path)
        auditor = doc.audit()
        found = list(auditor.errors) + list(auditor.fixes)
        for entry in found:
            print(f"{path}: {entry.code}: {entry.message}")
        faults += len(found)
        counts = {}
        for entity in doc.modelspace():
            counts[entity.dxftype()] = counts.get(entity.dxftype(), 0) + 1
        print(path.rsplit("/", 1)[-1], doc.dxfversion,
              " ".join(f"{name}={counts[name]}" for name in sorted(counts)))
    except Exception as error:  # whatever the reader stumbles over is the answer
        print(f"{path}: {type(error).__name__}: {error}")
        faults += 1
sys.exit(1 if faults else 0)
