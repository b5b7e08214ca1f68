#include <string>

#include "product/base/Colours.h"
#include "product/report/Page.h"

namespace product {

const char* PageStyle() {
    static const std::string style = std::string(R"css(
:root{color-scheme:light;--ink:#1d2733;--soft:#5d6b7a;--line:#dfe4ea;--good:#1c7c4a;--bad:#b3261e;--look:)css") +
                                     kNoticeColour + R"css(}
*{box-sizing:border-box}
body{margin:0;padding:24px 28px 60px;background:#f6f7f9;color:var(--ink);font:14px/1.45 'DejaVu Sans','Noto Sans CJK SC','Segoe UI',sans-serif}
h1{margin:0 0 10px;font-size:22px;font-weight:600}
header p{margin:6px 0;color:var(--soft)}
.figures{display:flex;flex-wrap:wrap;gap:10px;margin:0 0 8px;padding:0;list-style:none}
.figures li{padding:6px 14px;border:1px solid var(--line);border-radius:8px;background:#fff;color:var(--soft)}
.figures b{margin-right:3px;font-size:18px;color:var(--ink)}
.figures .done b{color:var(--good)}.figures .failed b{color:var(--bad)}.figures .look b{color:var(--look)}
.controls label{margin-right:18px}
input,select{padding:4px 8px;border:1px solid #c3cbd4;border-radius:6px;background:#fff;font:inherit}
.troubles{margin:12px 0;padding:10px 10px 10px 28px;border-left:4px solid var(--look);background:#fff8e8}
.troubles .failed{color:var(--bad)}
table{width:100%;margin-top:14px;border-collapse:separate;border-spacing:0;border:1px solid var(--line);border-radius:10px;background:#fff}
th{position:sticky;top:0;z-index:1;padding:8px 10px;border-bottom:1px solid var(--line);background:#eef1f5;text-align:left;font-size:12.5px;font-weight:600;white-space:nowrap}
th button{all:unset;cursor:pointer}
th button:focus-visible{outline:2px solid )css" +
                                     kAxisColour + R"css(;outline-offset:2px;border-radius:3px}
th button::after{content:' \2195';color:#a8b2bd}
th[aria-sort=ascending] button::after{content:' \2191';color:var(--ink)}
th[aria-sort=descending] button::after{content:' \2193';color:var(--ink)}
td{padding:10px;border-bottom:1px solid var(--line);vertical-align:top}
tbody tr:last-child td{border-bottom:0}
tr.failed td:first-child{box-shadow:inset 4px 0 var(--bad)}
tr.look td:first-child{box-shadow:inset 4px 0 #e0a030}
td.number{text-align:right;font-variant-numeric:tabular-nums;white-space:nowrap}
td p{margin:4px 0 0;max-width:22em;color:var(--bad)}
.name{font-weight:600;white-space:nowrap}
.status{padding:1px 9px;border-radius:9px;color:#fff;background:var(--good)}
.status{white-space:nowrap}
.status.failed{background:var(--bad)}.status.look{background:var(--look)}
td.picture svg{display:block;width:330px;max-height:230px}
td.solid img{display:block;width:200px;max-height:190px;object-fit:contain}
td.findings{min-width:22em;font-size:13px}
td.findings summary{color:var(--soft);cursor:pointer}
td.file{max-width:11em;overflow-wrap:anywhere;font-size:12.5px;color:var(--soft)}
.remarks{margin-top:22px;color:var(--soft);font-size:12.5px}
.remarks h2{margin:0 0 4px;font-size:14px;font-weight:600}
td.findings ol{margin:0 0 4px;padding-left:20px;color:var(--look)}
td.findings ul{margin:0;padding-left:20px;color:var(--soft)}
[hidden]{display:none}
@media (max-width:1500px){
body{padding:18px 14px 40px}
td,th{padding:8px 6px}
td.picture svg{width:230px}
td.solid img{width:120px}
td.findings{min-width:21em}
}
@media print{
@page{size:A4 landscape;margin:10mm}
*{print-color-adjust:exact;-webkit-print-color-adjust:exact}
body{padding:0;background:#fff;font-size:8.5pt}
.controls,th button::after{display:none}
table{border-radius:0}
th{position:static;white-space:normal}
thead{display:table-header-group}
tr{break-inside:avoid}
td,th{padding:4px 5px}
td.picture svg{width:62mm;max-height:45mm}
td.solid img{width:36mm}
td.findings{min-width:0;font-size:7.5pt}
td.findings summary{display:none}
}
)css";
    return style.c_str();
}

const char* PageScript() {
    return R"js(
'use strict';
const body = document.querySelector('tbody');
const heads = [...document.querySelectorAll('thead th')];
const keyOf = (row, column) => row.cells[column].dataset.v;

function sortBy(column) {
  const head = heads[column];
  const down = head.getAttribute('aria-sort') === 'ascending';
  for (const other of heads) if (other.dataset.kind) other.setAttribute('aria-sort', 'none');
  head.setAttribute('aria-sort', down ? 'descending' : 'ascending');
  const compare = head.dataset.kind === 'number' ? (a, b) => a - b
    : (a, b) => a.localeCompare(b, undefined, {numeric: true});
  const rows = [...body.rows].sort((r, s) => {
    const a = keyOf(r, column), b = keyOf(s, column);
    // What is not known comes last either way.
    if (a === '' || b === '') return (a === '') - (b === '');
    return down ? compare(b, a) : compare(a, b);
  });
  body.append(...rows);
}
heads.forEach((head, column) => {
  const button = head.querySelector('button');
  if (button) button.addEventListener('click', () => sortBy(column));
});

const find = document.getElementById('find'), show = document.getElementById('show');
function narrow() {
  const word = find.value.trim().toLowerCase();
  for (const row of body.rows) {
    const fits = !show.value || row.classList.contains(show.value);
    row.hidden = !fits || !row.textContent.toLowerCase().includes(word);
  }
}
find.addEventListener('input', narrow);
show.addEventListener('change', narrow);
)js";
}

}  // namespace product
