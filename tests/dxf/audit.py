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
    name = path.rsplit("/", 1)[-1]
    try:
        auditor = ezdxf.readfile(path).audit()
        found = [f"{entry.code}: {entry.message}" for entry in
                 list(auditor.errors) + list(auditor.fixes)]
    except Exception as error:  # whatever the reader stumbles over is the answer
        found = [f"{type(error).__name__}: {error}"]
    for fault in found:
        print(f"{name}: {fault}")
    faults += len(found)
sys.exit(1 if faults else 0)
