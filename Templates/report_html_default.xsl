<?xml version="1.0" encoding="UTF-8"?>
<!--
  A report as one HTML page that needs nothing beside it: contents with links, tables that sort by a click on
  a header, a switch between mil and mm, a light and a dark look. Links into the board lead to a picture of it
  beside the page, named after the board with the extension svg. Without scripts the page shows the default
  unit and the reader's own look.
-->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
  <xsl:param name="file_extension">html</xsl:param>
  <xsl:include href="report_common.xsl"/>
  <xsl:include href="report_html_look.xsl"/>
  <xsl:output method="html" encoding="UTF-8" indent="no" doctype-system="about:legacy-compat"/>

  <xsl:variable name="document-name">
    <xsl:call-template name="file-name"><xsl:with-param name="path" select="$document"/></xsl:call-template>
  </xsl:variable>

  <xsl:template match="/report">
    <html lang="en" data-unit="{$unit}">
      <head>
        <meta charset="UTF-8"/>
        <meta name="viewport" content="width=device-width, initial-scale=1"/>
        <title>
          <xsl:value-of select="title"/>
          <xsl:if test="$document != ''"> - <xsl:value-of select="$document-name"/></xsl:if>
        </title>
        <xsl:call-template name="style"/>
      </head>
      <body>
        <div class="bar" role="banner">
          <span class="name"><xsl:value-of select="title"/></span>
          <xsl:if test="units or .//coordinate">
            <span class="switch" role="group" aria-label="Units">
              <button type="button" data-set-unit="mm">mm</button>
              <button type="button" data-set-unit="mil">mil</button>
            </span>
          </xsl:if>
          <span class="switch" role="group" aria-label="Look">
            <button type="button" data-set-theme="auto">Auto</button>
            <button type="button" data-set-theme="light">Light</button>
            <button type="button" data-set-theme="dark">Dark</button>
          </span>
        </div>
        <div class="page" role="main">
          <h1>
            <xsl:value-of select="title"/>
            <xsl:if test="$document != ''">
              <span class="on"><xsl:value-of select="$document-name"/></span>
            </xsl:if>
          </h1>
          <dl class="facts">
            <xsl:if test="$document != ''">
              <dt>Document</dt>
              <dd><xsl:apply-templates select="filename/file"/></dd>
            </xsl:if>
            <xsl:if test="date">
              <dt>Written</dt>
              <dd><xsl:value-of select="date"/><xsl:text> </xsl:text><xsl:value-of select="time"/></dd>
            </xsl:if>
            <xsl:if test="elapsed_time">
              <dt>Took</dt>
              <dd><xsl:value-of select="elapsed_time"/></dd>
            </xsl:if>
            <xsl:apply-templates select="frontmatter" mode="fact"/>
          </dl>
          <xsl:apply-templates
              select="*[not(self::title or self::resource_path or self::date or self::time or self::filename or
                       self::elapsed_time or self::units[@default] or self::frontmatter)]"/>
        </div>
        <xsl:call-template name="script"/>
      </body>
    </html>
  </xsl:template>

  <!-- Front matter of the report is among its facts; elsewhere it is a list of its own. -->
  <xsl:template match="frontmatter" mode="fact">
    <dt><xsl:value-of select="name"/></dt>
    <dd><xsl:apply-templates select="*[not(self::name)]"/></dd>
  </xsl:template>
  <xsl:template match="frontmatter">
    <dl class="facts"><xsl:apply-templates select="." mode="fact"/></dl>
  </xsl:template>

  <xsl:template match="section">
    <div id="{generate-id()}">
      <!-- Many small tables stand side by side. -->
      <xsl:attribute name="class">section<xsl:if test="count(table) &gt; 4"> many</xsl:if></xsl:attribute>
      <h2><a class="anchor" href="#{generate-id()}"><xsl:value-of select="title"/></a></h2>
      <xsl:variable name="content" select="*[not(self::title)]"/>
      <xsl:apply-templates select="$content"/>
      <xsl:if test="not($content)"><p class="none">Nothing in this report.</p></xsl:if>
    </div>
  </xsl:template>

  <!-- The contents list what is not the list itself. -->
  <xsl:template match="contents">
    <ul class="contents">
      <xsl:for-each select="/report/section[not(contents)]">
        <li>
          <xsl:if test="not(*[not(self::title)])"><xsl:attribute name="class">empty</xsl:attribute></xsl:if>
          <a href="#{generate-id()}"><xsl:value-of select="title"/></a>
          <xsl:if test="count(table) &gt; 1">
            <ul>
              <xsl:for-each select="table">
                <li><a href="#{generate-id()}"><xsl:value-of select="title"/></a></li>
              </xsl:for-each>
            </ul>
          </xsl:if>
        </li>
      </xsl:for-each>
      <xsl:for-each select="/report/table">
        <li><a href="#{generate-id()}"><xsl:value-of select="title"/></a></li>
      </xsl:for-each>
    </ul>
  </xsl:template>

  <!-- Tables. -->
  <xsl:template match="table">
    <xsl:variable name="leaves" select="key('leaves', generate-id(columns))"/>
    <xsl:variable name="width">
      <xsl:for-each select="row">
        <xsl:sort select="count(cell)" data-type="number" order="descending"/>
        <xsl:if test="position() = 1"><xsl:value-of select="count(cell)"/></xsl:if>
      </xsl:for-each>
    </xsl:variable>
    <div class="table" id="{generate-id()}">
      <table>
        <xsl:if test="not(@suppress_title or columns/@use = 'title')">
          <caption><xsl:value-of select="title"/></caption>
        </xsl:if>
        <thead>
          <xsl:if test="columns/@use = 'title'">
            <tr class="title">
              <th>
                <xsl:attribute name="colspan">
                  <xsl:choose>
                    <xsl:when test="$leaves"><xsl:value-of select="count($leaves)"/></xsl:when>
                    <xsl:when test="number($width) &gt; 0"><xsl:value-of select="$width"/></xsl:when>
                    <xsl:otherwise>1</xsl:otherwise>
                  </xsl:choose>
                </xsl:attribute>
                <xsl:value-of select="title"/>
              </th>
            </tr>
          </xsl:if>
          <xsl:if test="columns/column">
            <tr><xsl:apply-templates select="columns/column"/></tr>
          </xsl:if>
          <xsl:if test="columns/column/subcolumns/column">
            <tr><xsl:apply-templates select="columns/column/subcolumns/column"/></tr>
          </xsl:if>
        </thead>
        <tbody>
          <xsl:apply-templates select="row"><xsl:with-param name="leaves" select="$leaves"/></xsl:apply-templates>
          <xsl:if test="not(row or tr)">
            <tr class="none"><td colspan="{count($leaves) + not($leaves)}">None</td></tr>
          </xsl:if>
        </tbody>
        <xsl:if test="@numeric_totals and count(row) &gt; 1 and $leaves[@data_type = 'number']">
          <xsl:call-template name="totals"><xsl:with-param name="leaves" select="$leaves"/></xsl:call-template>
        </xsl:if>
      </table>
    </div>
  </xsl:template>

  <xsl:template match="column">
    <!-- Lengths stand to the right like numbers, and so does their header. -->
    <xsl:variable name="number" select="count(preceding::column[generate-id(ancestor::columns[1]) =
        generate-id(current()/ancestor::columns[1]) and not(subcolumns/column)]) + 1"/>
    <xsl:variable name="first" select="ancestor::table[1]/row[1]/cell[position() = $number]"/>
    <th scope="col">
      <xsl:choose>
        <xsl:when test="subcolumns/column">
          <xsl:attribute name="colspan"><xsl:value-of select="count(subcolumns/column)"/></xsl:attribute>
          <xsl:attribute name="class">over</xsl:attribute>
        </xsl:when>
        <xsl:otherwise>
          <xsl:if test="not(parent::subcolumns) and ../column/subcolumns/column">
            <xsl:attribute name="rowspan">2</xsl:attribute>
          </xsl:if>
          <xsl:attribute name="class">
            <xsl:text>sorts</xsl:text>
            <xsl:if test="@data_type = 'number' or count($first/*) = 1 and $first/coordinate or number($first) = number($first)"> num</xsl:if>
          </xsl:attribute>
        </xsl:otherwise>
      </xsl:choose>
      <xsl:apply-templates select="node()[not(self::subcolumns)]"/>
    </th>
  </xsl:template>

  <!-- Sums under the columns of numbers. What is no number counts nothing. -->
  <xsl:template name="totals">
    <xsl:param name="leaves"/>
    <xsl:variable name="rows" select="row"/>
    <tfoot>
      <tr>
        <xsl:for-each select="$leaves">
          <xsl:variable name="column" select="position()"/>
          <xsl:variable name="cells" select="$rows/cell[position() = $column]"/>
          <td>
            <xsl:choose>
              <xsl:when test="@data_type = 'number'">
                <xsl:attribute name="class">num</xsl:attribute>
                <xsl:value-of select="format-number(sum($cells[number(.) = number(.)]), '0.###')"/>
              </xsl:when>
              <xsl:when test="$column = 1">Total</xsl:when>
            </xsl:choose>
          </td>
        </xsl:for-each>
      </tr>
    </tfoot>
  </xsl:template>

  <!-- The columns are handed on: to look for them among the table's rows takes long where there are many. -->
  <xsl:template match="row">
    <xsl:param name="leaves"/>
    <tr>
      <xsl:call-template name="given-style"/>
      <xsl:apply-templates select="cell"><xsl:with-param name="leaves" select="$leaves"/></xsl:apply-templates>
    </tr>
  </xsl:template>

  <xsl:template match="cell">
    <xsl:param name="leaves"/>
    <xsl:variable name="column" select="position()"/>
    <xsl:variable name="is-number" select="$leaves[$column]/@data_type = 'number'"/>
    <xsl:variable name="is-length" select="count(*) = 1 and coordinate"/>
    <xsl:variable name="percent" select="substring-before(., '%')"/>
    <xsl:variable name="is-part" select="substring-after(., '%') = '' and number($percent) = number($percent)
                                         and $percent &gt;= 0 and not(*/*)"/>
    <td>
      <xsl:call-template name="given-style">
        <xsl:with-param name="class">
          <xsl:if test="$is-number or $is-length or $is-part or $leaves and number(.) = number(.)">num</xsl:if>
          <xsl:if test="$is-number and normalize-space(.) = '0'"> zero</xsl:if>
        </xsl:with-param>
      </xsl:call-template>
      <xsl:if test="$is-length"><xsl:attribute name="data-sort"><xsl:value-of select="coordinate"/></xsl:attribute></xsl:if>
      <xsl:apply-templates/>
      <xsl:if test="$is-part">
        <span class="part"><span style="width:{format-number($percent - ($percent &gt; 100) * ($percent - 100), '0.##')}%"></span></span>
      </xsl:if>
    </td>
  </xsl:template>

  <!-- What a report says of the look of a row or cell: declarations of CSS, else the name of a class. -->
  <xsl:template name="given-style">
    <xsl:param name="class"/>
    <xsl:variable name="is-css" select="contains(@html_style, ':')"/>
    <xsl:if test="$is-css"><xsl:attribute name="style"><xsl:value-of select="@html_style"/></xsl:attribute></xsl:if>
    <xsl:variable name="names">
      <xsl:value-of select="$class"/>
      <xsl:if test="not($is-css)"><xsl:value-of select="concat(' ', @html_style)"/></xsl:if>
    </xsl:variable>
    <xsl:if test="normalize-space($names) != ''">
      <xsl:attribute name="class"><xsl:value-of select="normalize-space($names)"/></xsl:attribute>
    </xsl:if>
  </xsl:template>

  <!-- How many rows the tables of each type have. -->
  <xsl:template match="summary_table">
    <div class="table" id="{generate-id()}">
      <table class="summary">
        <caption><xsl:value-of select="title"/></caption>
        <tbody>
          <xsl:for-each select="columns/column">
            <xsl:variable name="tables" select="//table[type = current()/@type]"/>
            <tr>
              <th scope="row">
                <xsl:choose>
                  <xsl:when test="$tables">
                    <a href="#{generate-id($tables[1])}"><xsl:call-template name="summary-name"/></a>
                  </xsl:when>
                  <xsl:otherwise><xsl:call-template name="summary-name"/></xsl:otherwise>
                </xsl:choose>
              </th>
              <td class="num"><xsl:value-of select="count($tables/row)"/></td>
            </tr>
          </xsl:for-each>
        </tbody>
      </table>
    </div>
  </xsl:template>
  <xsl:template name="summary-name">
    <xsl:choose>
      <xsl:when test=". != ''"><xsl:value-of select="."/></xsl:when>
      <xsl:otherwise><xsl:value-of select="@type"/></xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <!-- Lengths. -->
  <xsl:template match="coordinate">
    <span class="length" data-length="{.}">
      <xsl:call-template name="length"><xsl:with-param name="value" select="."/></xsl:call-template>
      <span class="unit"><xsl:value-of select="concat('&#160;', $unit)"/></span>
    </span>
  </xsl:template>
  <xsl:template match="units"><span class="units"><xsl:value-of select="$unit"/></span></xsl:template>

  <!-- Links. -->
  <xsl:template match="callback[@process = 'PCB:Zoom' and contains(@parameters, 'Location2.Y=')]">
    <xsl:variable name="x1" select="substring-before(substring-after(@parameters, 'Location1.X='), 'mil') * 0.0254"/>
    <xsl:variable name="x2" select="substring-before(substring-after(@parameters, 'Location2.X='), 'mil') * 0.0254"/>
    <xsl:variable name="y1" select="substring-before(substring-after(@parameters, 'Location1.Y='), 'mil') * 0.0254"/>
    <xsl:variable name="y2" select="substring-before(substring-after(@parameters, 'Location2.Y='), 'mil') * 0.0254"/>
    <xsl:variable name="board">
      <xsl:choose>
        <xsl:when test="@document"><xsl:value-of select="@document"/></xsl:when>
        <xsl:otherwise><xsl:value-of select="$document"/></xsl:otherwise>
      </xsl:choose>
    </xsl:variable>
    <xsl:variable name="board-name">
      <xsl:call-template name="file-name"><xsl:with-param name="path" select="$board"/></xsl:call-template>
    </xsl:variable>
    <xsl:variable name="picture">
      <xsl:call-template name="stem"><xsl:with-param name="name" select="$board-name"/></xsl:call-template>
    </xsl:variable>
    <!-- A margin of 2 mm, so that what is around is seen; y goes down in the picture. -->
    <a class="zoom" title="Show it on the board"
       href="{concat($picture, '.svg#svgView(viewBox(', format-number($x1 - 2, '0.###'), ',',
              format-number(-$y2 - 2, '0.###'), ',', format-number($x2 - $x1 + 4, '0.###'), ',',
              format-number($y2 - $y1 + 4, '0.###'), '))')}">
      <xsl:apply-templates/>
    </a>
  </xsl:template>
  <xsl:template match="callback">
    <span class="command" title="{concat(@process, ' ', @parameters)}"><xsl:apply-templates/></span>
  </xsl:template>

  <xsl:template match="hyperlink">
    <xsl:variable name="text">
      <xsl:choose>
        <xsl:when test="@description != ''"><xsl:value-of select="@description"/></xsl:when>
        <xsl:otherwise><xsl:value-of select="@address"/></xsl:otherwise>
      </xsl:choose>
    </xsl:variable>
    <xsl:variable name="scheme" select="substring-before(@address, ':')"/>
    <xsl:choose>
      <!-- Only addresses that lead somewhere: none that runs a script. -->
      <xsl:when test="$scheme = '' or contains(' http https mailto ftp file ', concat(' ', $scheme, ' '))">
        <a href="{@address}">
          <xsl:if test="@open_In_New_Window">
            <xsl:attribute name="target">_blank</xsl:attribute>
            <xsl:attribute name="rel">noopener</xsl:attribute>
          </xsl:if>
          <xsl:value-of select="$text"/>
        </a>
      </xsl:when>
      <xsl:otherwise><xsl:value-of select="$text"/></xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <xsl:template match="file"><a href="{@filename}"><xsl:value-of select="."/></a></xsl:template>
  <xsl:template match="image">
    <xsl:variable name="name">
      <xsl:call-template name="file-name"><xsl:with-param name="path" select="@filename"/></xsl:call-template>
    </xsl:variable>
    <img src="{@filename}" alt="{$name}"/>
  </xsl:template>

  <!-- Text. -->
  <xsl:template match="error"><p class="error" role="alert"><xsl:value-of select="."/></p></xsl:template>
  <xsl:template match="text"><xsl:value-of select="."/></xsl:template>
  <xsl:template match="linebreak"><br/></xsl:template>
  <xsl:template match="space"><xsl:text>&#160;</xsl:text></xsl:template>
  <xsl:template match="hr"><hr/></xsl:template>
  <xsl:template match="h1"><h2 class="heading"><xsl:value-of select="."/></h2></xsl:template>
  <xsl:template match="h2"><h3><xsl:value-of select="."/></h3></xsl:template>
  <xsl:template match="list"><ul><xsl:apply-templates select="listelement"/></ul></xsl:template>
  <xsl:template match="listelement"><li><xsl:apply-templates/></li></xsl:template>
  <xsl:template match="title | name | type"/>

</xsl:stylesheet>
