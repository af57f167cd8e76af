<?xml version="1.0" encoding="UTF-8"?>
<!--
  A report as comma separated values (RFC 4180): its facts, then each table under a line with its section and
  title, with an empty line ahead. Lengths are numbers in the report's unit, which stands behind the name of
  their column.
-->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
  <xsl:param name="file_extension">csv</xsl:param>
  <xsl:include href="report_common.xsl"/>
  <xsl:output method="text" encoding="UTF-8"/>
  <xsl:variable name="eol" select="'&#13;&#10;'"/>

  <xsl:template match="/report">
    <xsl:call-template name="pair">
      <xsl:with-param name="name">Report</xsl:with-param><xsl:with-param name="value" select="title"/>
    </xsl:call-template>
    <xsl:call-template name="pair">
      <xsl:with-param name="name">Document</xsl:with-param><xsl:with-param name="value" select="$document"/>
    </xsl:call-template>
    <xsl:call-template name="pair">
      <xsl:with-param name="name">Date</xsl:with-param><xsl:with-param name="value" select="date"/>
    </xsl:call-template>
    <xsl:call-template name="pair">
      <xsl:with-param name="name">Time</xsl:with-param><xsl:with-param name="value" select="time"/>
    </xsl:call-template>
    <xsl:for-each select=".//frontmatter">
      <xsl:call-template name="pair">
        <xsl:with-param name="name" select="name"/>
        <xsl:with-param name="value"><xsl:apply-templates select="*[not(self::name)]"/></xsl:with-param>
      </xsl:call-template>
    </xsl:for-each>
    <xsl:for-each select="error">
      <xsl:call-template name="pair">
        <xsl:with-param name="name">Error</xsl:with-param><xsl:with-param name="value" select="."/>
      </xsl:call-template>
    </xsl:for-each>
    <xsl:apply-templates select=".//table | .//summary_table" mode="block"/>
  </xsl:template>

  <xsl:template name="pair">
    <xsl:param name="name"/>
    <xsl:param name="value"/>
    <xsl:if test="string($value) != ''">
      <xsl:call-template name="field"><xsl:with-param name="text" select="$name"/></xsl:call-template>
      <xsl:text>,</xsl:text>
      <xsl:call-template name="field"><xsl:with-param name="text" select="$value"/></xsl:call-template>
      <xsl:value-of select="$eol"/>
    </xsl:if>
  </xsl:template>

  <xsl:template match="table | summary_table" mode="block">
    <xsl:value-of select="$eol"/>
    <xsl:call-template name="field"><xsl:with-param name="text" select="ancestor::section[1]/title"/></xsl:call-template>
    <xsl:text>,</xsl:text>
    <xsl:call-template name="field"><xsl:with-param name="text" select="title"/></xsl:call-template>
    <xsl:value-of select="$eol"/>
    <xsl:if test="self::summary_table">
      <xsl:for-each select="columns/column">
        <xsl:call-template name="pair">
          <xsl:with-param name="name">
            <xsl:value-of select="."/><xsl:if test=". = ''"><xsl:value-of select="@type"/></xsl:if>
          </xsl:with-param>
          <xsl:with-param name="value" select="count(//table[type = current()/@type]/row)"/>
        </xsl:call-template>
      </xsl:for-each>
    </xsl:if>
    <xsl:variable name="rows" select="row"/>
    <xsl:for-each select="key('leaves', generate-id(columns))">
      <xsl:variable name="column" select="position()"/>
      <xsl:if test="ancestor::table">
        <xsl:if test="$column &gt; 1">,</xsl:if>
        <xsl:call-template name="field">
          <xsl:with-param name="text">
            <xsl:apply-templates select="node()[not(self::subcolumns)]"/>
            <xsl:if test="$rows/cell[position() = $column][count(*) = 1]/coordinate"><xsl:value-of select="concat(' [', $unit, ']')"/></xsl:if>
          </xsl:with-param>
        </xsl:call-template>
        <xsl:if test="$column = last()"><xsl:value-of select="$eol"/></xsl:if>
      </xsl:if>
    </xsl:for-each>
    <xsl:apply-templates select="$rows" mode="line"/>
  </xsl:template>

  <!-- Elements, which a text leaves out, keep it in short pieces: one long piece takes ever longer to grow. -->
  <xsl:template match="row" mode="line">
    <row>
      <xsl:for-each select="cell">
        <xsl:if test="position() &gt; 1">,</xsl:if>
        <xsl:call-template name="field">
          <xsl:with-param name="text"><xsl:apply-templates/></xsl:with-param>
        </xsl:call-template>
      </xsl:for-each>
      <xsl:value-of select="$eol"/>
    </row>
  </xsl:template>

  <!-- Quoted where it has to be, with quotes doubled. -->
  <xsl:template name="field">
    <xsl:param name="text"/>
    <xsl:variable name="given" select="string($text)"/>
    <xsl:choose>
      <xsl:when test="translate($given, ',&quot;&#10;&#13;', '') = $given and normalize-space($given) = $given">
        <xsl:value-of select="$text"/>
      </xsl:when>
      <xsl:otherwise>
        <xsl:text>"</xsl:text>
        <xsl:call-template name="doubled"><xsl:with-param name="text" select="$text"/></xsl:call-template>
        <xsl:text>"</xsl:text>
      </xsl:otherwise>
    </xsl:choose>
  </xsl:template>
  <xsl:template name="doubled">
    <xsl:param name="text"/>
    <xsl:choose>
      <xsl:when test="contains($text, '&quot;')">
        <xsl:value-of select="concat(substring-before($text, '&quot;'), '&quot;&quot;')"/>
        <xsl:call-template name="doubled">
          <xsl:with-param name="text" select="substring-after($text, '&quot;')"/>
        </xsl:call-template>
      </xsl:when>
      <xsl:otherwise><xsl:value-of select="$text"/></xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <!-- A length that is not alone in its cell has its unit beside it. -->
  <xsl:template match="coordinate">
    <xsl:call-template name="length"><xsl:with-param name="value" select="."/></xsl:call-template>
    <xsl:if test="count(../*) &gt; 1"><xsl:value-of select="concat(' ', $unit)"/></xsl:if>
  </xsl:template>
  <xsl:template match="units"><xsl:value-of select="$unit"/></xsl:template>
  <xsl:template match="space"><xsl:text> </xsl:text></xsl:template>
  <xsl:template match="linebreak"><xsl:text>&#10;</xsl:text></xsl:template>
  <xsl:template match="hyperlink">
    <xsl:value-of select="@description"/><xsl:if test="@description = ''"><xsl:value-of select="@address"/></xsl:if>
  </xsl:template>
  <xsl:template match="image"><xsl:value-of select="@filename"/></xsl:template>
  <xsl:template match="listelement"><xsl:apply-templates/><xsl:text>&#10;</xsl:text></xsl:template>
  <xsl:template match="text | file"><xsl:value-of select="."/></xsl:template>

</xsl:stylesheet>
