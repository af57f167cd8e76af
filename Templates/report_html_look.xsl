<?xml version="1.0" encoding="UTF-8"?>
<!-- The look of the HTML page, and what its switches do. -->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">

  <xsl:template name="style">
    <style><xsl:text disable-output-escaping="yes"><![CDATA[
:root{color-scheme:light;--page:#f6f7f4;--card:#fff;--ink:#1d2520;--soft:#5d6a62;--line:#dde2dc;--head:#edf1ec;
--accent:#0b6b46;--bar:#0e3b2a;--barink:#eef5f0;--part:#b87333;--bad:#b3261e;--badback:#fdeceb}
@media (prefers-color-scheme:dark){:root:not([data-theme=light]){color-scheme:dark;--page:#121614;--card:#1a201d;
--ink:#e3e9e5;--soft:#95a39b;--line:#2d3732;--head:#222a26;--accent:#5fd0a0;--bar:#0a2a1e;--barink:#dfeee6;
--part:#d99559;--bad:#ff8a80;--badback:#3a1f1d}}
:root[data-theme=dark]{color-scheme:dark;--page:#121614;--card:#1a201d;--ink:#e3e9e5;--soft:#95a39b;--line:#2d3732;
--head:#222a26;--accent:#5fd0a0;--bar:#0a2a1e;--barink:#dfeee6;--part:#d99559;--bad:#ff8a80;--badback:#3a1f1d}
*{box-sizing:border-box}
body{margin:0;background:var(--page);color:var(--ink);font:15px/1.5 system-ui,"Segoe UI",Roboto,"DejaVu Sans",sans-serif}
a{color:var(--accent)}
.bar{position:sticky;top:0;z-index:2;display:flex;flex-wrap:wrap;gap:.5rem 1rem;align-items:center;padding:.5rem 1.5rem;
background:var(--bar);color:var(--barink)}
.bar .name{flex:1;font-weight:600;white-space:nowrap}
.switch{display:none;border:1px solid rgba(255,255,255,.35);border-radius:6px;overflow:hidden}
.js .switch{display:inline-flex}
.switch button{border:0;padding:.2rem .7rem;background:none;color:inherit;font:inherit;font-size:13px;cursor:pointer}
.switch button[aria-pressed=true]{background:var(--barink);color:var(--bar);font-weight:600}
.switch button:focus-visible,th.sorts:focus-visible{outline:2px solid var(--part);outline-offset:-2px}
.page{max-width:1080px;margin:0 auto;padding:1.5rem}
h1{margin:.2rem 0 .6rem;font-size:1.7rem;line-height:1.25}
h1 .on{display:block;font-size:1rem;font-weight:500;color:var(--soft)}
h2{margin:0 0 .7rem;font-size:1.15rem}
h3{margin:1rem 0 .4rem;font-size:1rem}
h2 a.anchor{color:inherit;text-decoration:none}
h2 a.anchor:hover{text-decoration:underline}
.facts{display:grid;grid-template-columns:max-content 1fr;gap:.1rem 1rem;margin:0 0 1.2rem;font-size:14px}
.facts dt{color:var(--soft)}
.facts dd{margin:0;overflow-wrap:anywhere}
.section{margin:0 0 1.2rem;padding:1rem 1.2rem;background:var(--card);border:1px solid var(--line);border-radius:10px;
scroll-margin-top:4rem}
.contents{columns:16rem;margin:0;padding:0;list-style:none}
.contents>li{break-inside:avoid;margin:0 0 .35rem}
.contents ul{margin:.1rem 0 0;padding-left:1rem;list-style:none;font-size:13px}
.contents .empty a{color:var(--soft);text-decoration:none}
.table{overflow-x:auto;margin:0 0 1rem;scroll-margin-top:4rem}
.table:last-child{margin-bottom:0}
.many{columns:23rem;column-gap:2.5rem}
.many h2{column-span:all}
.many .table{break-inside:avoid;margin:0;padding-bottom:1.2rem}
.many table{width:100%;min-width:0}
.js .many th.sorts{white-space:normal}
table{border-collapse:collapse;min-width:22rem;font-variant-numeric:tabular-nums}
caption{text-align:left;font-weight:600;padding:.2rem 0 .4rem}
th,td{padding:.3rem .8rem;border-bottom:1px solid var(--line);text-align:left;vertical-align:baseline}
thead th{background:var(--head);font-size:13px;border-bottom:2px solid var(--line)}
thead tr.title th{font-size:14px}
th.over{text-align:center}
th.num,td.num{text-align:right}
td.zero{color:var(--soft);opacity:.65}
tbody tr:hover td{background:var(--head)}
tfoot td{font-weight:600;border-top:2px solid var(--line);border-bottom:0}
tr.none td,p.none{color:var(--soft);font-style:italic}
p.none{margin:0}
.summary th{font-weight:500}
.js th.sorts{cursor:pointer;user-select:none;white-space:nowrap}
.js th.sorts::after{content:"\2195";margin-left:.35em;opacity:.3;font-weight:400}
.js th[aria-sort=ascending]::after{content:"\2191";opacity:1}
.js th[aria-sort=descending]::after{content:"\2193";opacity:1}
.length{white-space:nowrap}
.unit{color:var(--soft);font-size:.85em}
.part{display:inline-block;width:5rem;height:.55em;margin-left:.7rem;background:var(--line);border-radius:3px;overflow:hidden}
.part span{display:block;height:100%;background:var(--part)}
.zoom{text-decoration-style:dotted}
.command{border-bottom:1px dotted var(--soft)}
.error{margin:0 0 1rem;padding:.6rem 1rem;background:var(--badback);color:var(--bad);border-left:4px solid var(--bad);
border-radius:6px;font-weight:500}
img{max-width:100%;height:auto}
hr{border:0;border-top:1px solid var(--line)}
@media print{:root,:root:not([data-theme=light]),:root[data-theme=dark]{color-scheme:light;--page:#fff;--card:#fff;--ink:#000;
--soft:#444;--line:#bbb;--head:#eee;--accent:#000;--part:#777;--bad:#000;--badback:#fff}
body{font-size:10pt}.bar{display:none}.page{max-width:none;padding:0}.section{border:0;padding:0;margin-bottom:6mm}
a{text-decoration:none}.table{overflow:visible}table{font-size:8.5pt}thead th{font-size:8pt}
th,td{padding:.15rem .35rem}.many{columns:17rem}.many .table{padding-bottom:.8rem}.js th.sorts{white-space:normal}tr,.contents>li{break-inside:avoid}h2,caption{break-after:avoid}
thead{display:table-header-group}tfoot{display:table-row-group}.js th.sorts::after{content:""}
thead th,.part,.part span{-webkit-print-color-adjust:exact;print-color-adjust:exact}}
]]></xsl:text></style>
  </xsl:template>

  <xsl:template name="script">
    <script><xsl:text disable-output-escaping="yes"><![CDATA[
(function () {
  var root = document.documentElement;
  function all(selector, from) { return Array.prototype.slice.call((from || document).querySelectorAll(selector)); }
  function keep(key, value) { try { localStorage.setItem(key, value); } catch (e) {} }
  function kept(key) { try { return localStorage.getItem(key); } catch (e) { return null; } }

  function number(value, digits) { return String(parseFloat(value.toFixed(digits))); }
  function setUnit(unit) {
    root.setAttribute('data-unit', unit);
    all('.length').forEach(function (e) {
      var length = Number(e.getAttribute('data-length'));
      if (isNaN(length)) return;
      e.firstChild.nodeValue = unit === 'mil' ? number(length / 1e4, 3) : number(length * 2.54e-6, 4);
      e.querySelector('.unit').textContent = '\u00a0' + unit;
    });
    all('.units').forEach(function (e) { e.textContent = unit; });
    press('data-set-unit', unit);
  }
  function setTheme(theme) {
    if (theme === 'auto') root.removeAttribute('data-theme'); else root.setAttribute('data-theme', theme);
    press('data-set-theme', theme);
  }
  function press(name, value) {
    all('[' + name + ']').forEach(function (b) { b.setAttribute('aria-pressed', String(b.getAttribute(name) === value)); });
  }

  var words = new Intl.Collator(undefined, { numeric: true, sensitivity: 'base' });
  function value(row, column) {
    var cell = row.cells[column];
    if (!cell) return '';
    var given = cell.getAttribute('data-sort'), text = cell.textContent.trim();
    if (given !== null) return Number(given);
    return /^[-+]?\d+(\.\d+)?%?$/.test(text) ? parseFloat(text) : text;
  }
  function compare(a, b) {
    if (typeof a === 'number' && typeof b === 'number') return a - b;
    return words.compare(String(a), String(b));
  }
  function sort(table, th) {
    var leaves = all('th.sorts', table), over = all('thead tr', table);
    // Headers over several columns come ahead of those under them.
    if (all('th.over', table).length) {
      leaves = [];
      var below = all('th', over[over.length - 1]);
      all('th', over[over.length - 2]).forEach(function (h) {
        if (h.classList.contains('over')) leaves = leaves.concat(below.splice(0, h.colSpan)); else leaves.push(h);
      });
    }
    var column = leaves.indexOf(th), down = th.getAttribute('aria-sort') === 'ascending';
    var rows = all('tr', table.tBodies[0]).map(function (row, i) { return { row: row, key: value(row, column), i: i }; });
    rows.sort(function (a, b) { return (down ? -1 : 1) * compare(a.key, b.key) || a.i - b.i; });
    rows.forEach(function (r) { table.tBodies[0].appendChild(r.row); });
    leaves.forEach(function (h) { h.removeAttribute('aria-sort'); });
    th.setAttribute('aria-sort', down ? 'descending' : 'ascending');
  }

  all('th.sorts').forEach(function (th) {
    var table = th.closest('table');
    th.tabIndex = 0;
    th.title = 'Sort';
    th.addEventListener('click', function () { sort(table, th); });
    th.addEventListener('keydown', function (e) {
      if (e.key === 'Enter' || e.key === ' ') { e.preventDefault(); sort(table, th); }
    });
  });
  all('[data-set-unit]').forEach(function (b) {
    b.addEventListener('click', function () { setUnit(b.getAttribute('data-set-unit')); });
  });
  all('[data-set-theme]').forEach(function (b) {
    b.addEventListener('click', function () { var t = b.getAttribute('data-set-theme'); setTheme(t); keep('report-theme', t); });
  });
  root.classList.add('js');
  press('data-set-unit', root.getAttribute('data-unit'));
  setTheme(kept('report-theme') || 'auto');
})();
]]></xsl:text></script>
  </xsl:template>

</xsl:stylesheet>
