"""Pages in a real browser, headless."""

import json
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest

CHROMIUM = shutil.which("chromium") or shutil.which("chromium-browser")


def run_in_page(page, script):
    """What the script's function returns, called in the page once it is shown, as Python data.

    The script runs in a copy of the page beside which nothing else lies, and without a network, so
    that a page which needs anything else shows it.
    """
    if CHROMIUM is None:
        raise unittest.SkipTest("Chromium is not installed")
    with tempfile.TemporaryDirectory() as folder:
        folder = pathlib.Path(folder)
        html = pathlib.Path(page).read_text(encoding="utf-8")
        call = ("<script>addEventListener('load', () => { let answer;"
                "try { answer = (" + script + ")(); } catch (fault) { answer = String(fault); }"
                "const out = document.createElement('pre'); out.id = 'answer';"
                "out.textContent = encodeURIComponent(JSON.stringify(answer));"
                "document.body.append(out); });</script>")
        # After the page: what the parser meets behind its end belongs to the body.
        (folder / "page.html").write_text(html + call, encoding="utf-8")
        done = subprocess.run(
            [CHROMIUM, "--headless", "--no-sandbox", "--disable-gpu", "--no-first-run",
             "--host-resolver-rules=MAP * ~NOTFOUND", "--user-data-dir=" + str(folder / "profile"),
             "--dump-dom", (folder / "page.html").as_uri()],
            capture_output=True, text=True, timeout=120)
        found = re.search(r'<pre id="answer">([^<]*)</pre>', done.stdout)
        assert found, "the page did not answer: " + done.stdout[-300:] + done.stderr[-2000:]
        from urllib.parse import unquote
        return json.loads(unquote(found.group(1)))
