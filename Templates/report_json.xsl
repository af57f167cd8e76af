<?xml version="1.0" encoding="UTF-8"?>
<!--
  A report as JSON:

    {"title", "document", "date", "time", "elapsed_time", "unit": "mm" or "mil",
     "frontmatter": [{"name", "text"}], "errors": [text],
     "tables": [{"section", "title", "type", "columns": [text], "rows": [[value]]}]}

  A cell is a number, a text, or {"coordinate": units of 1/10000 mil, "mm": number, "mil": number}.
-->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
  <xsl:param name="file_extension">json</xsl:param>
  <xsl:include href="report_common.xsl"/>
  <xsl:output method="text" encoding="UTF-8"/>

  <xsl:template match="/report">
    <xsl:text>{</xsl:text>
    <xsl:text>"title": </xsl:text>
    <xsl:call-template name="quote"><xsl:with-param name="text" select="string(title)"/></xsl:call-template>
    <xsl:for-each select="filename/file/@filename | date | time | elapsed_time">
      <xsl:text>,&#10; "</xsl:text>
      <xsl:choose>
        <xsl:when test="name() = 'filename'">document</xsl:when>
        <xsl:otherwise><xsl:value-of select="name()"/></xsl:otherwise>
      </xsl:choose>
      <xsl:text>": </xsl:text>
      <xsl:call-template name="quote"><xsl:with-param name="text" select="string(.)"/></xsl:call-template>
    </xsl:for-each>
    <xsl:text>,&#10; "unit": "</xsl:text><xsl:value-of select="$unit"/><xsl:text>",&#10; "frontmatter": [</xsl:text>
    <xsl:for-each select=".//frontmatter">
      <xsl:if test="position() &gt; 1">, </xsl:if>
      <xsl:text>{"name": </xsl:text>
      <xsl:call-template name="quote"><xsl:with-param name="text" select="string(name)"/></xsl:call-template>
      <xsl:text>, "text": </xsl:text>
      <xsl:call-template name="quote">
        <xsl:with-param name="text"><xsl:apply-templates select="*[not(self::name)]"/></xsl:with-param>
      </xsl:call-template>
      <xsl:text>}</xsl:text>
    </xsl:for-each>
    <xsl:text>],&#10; "errors": [</xsl:text>
    <xsl:for-each select="error">
      <xsl:if test="position() &gt; 1">, </xsl:if>
      <xsl:call-template name="quote"><xsl:with-param name="text" select="string(.)"/></xsl:call-template>
    </xsl:for-each>
    <xsl:text>],&#10; "tables": [</xsl:text>
    <xsl:for-each select=".//table">
      <xsl:if test="position() &gt; 1">,</xsl:if>
      <xsl:text>&#10;  </xsl:text>
      <xsl:apply-templates select="." mode="object"/>
    </xsl:for-each>
    <xsl:text>&#10; ]&#10;}&#10;</xsl:text>
  </xsl:template>

  <xsl:template match="table" mode="object">
    <xsl:text>{"section": </xsl:text>
    <xsl:call-template name="quote"><xsl:with-param name="text" select="string(ancestor::section[1]/title)"/></xsl:call-template>
    <xsl:text>, "title": </xsl:text>
    <xsl:call-template name="quote"><xsl:with-param name="text" select="string(title)"/></xsl:call-template>
    <xsl:if test="type">
      <xsl:text>, "type": </xsl:text>
      <xsl:call-template name="quote"><xsl:with-param name="text" select="string(type)"/></xsl:call-template>
    </xsl:if>
    <xsl:text>,&#10;   "columns": [</xsl:text>
    <xsl:for-each select="key('leaves', generate-id(columns))">
      <xsl:if test="position() &gt; 1">, </xsl:if>
      <xsl:call-template name="quote">
        <xsl:with-param name="text"><xsl:apply-templates select="node()[not(self::subcolumns)]"/></xsl:with-param>
      </xsl:call-template>
    </xsl:for-each>
    <xsl:text>],&#10;   "rows": [</xsl:text>
    <xsl:variable name="leaves" select="key('leaves', generate-id(columns))"/>
    <xsl:apply-templates select="row" mode="values"><xsl:with-param name="leaves" select="$leaves"/></xsl:apply-templates>
    <xsl:text>]}</xsl:text>
  </xsl:template>

  <!-- Elements, which a text leaves out, keep it in short pieces: one long piece takes ever longer to grow. -->
  <xsl:template match="row" mode="values">
    <xsl:param name="leaves"/>
    <row>
      <xsl:if test="position() &gt; 1">,</xsl:if>
      <xsl:text>&#10;    [</xsl:text>
      <xsl:for-each select="cell">
        <xsl:if test="position() &gt; 1">, </xsl:if>
        <xsl:variable name="column" select="position()"/>
        <xsl:apply-templates select="." mode="value">
          <xsl:with-param name="type" select="$leaves[$column]/@data_type"/>
        </xsl:apply-templates>
      </xsl:for-each>
      <xsl:text>]</xsl:text>
    </row>
  </xsl:template>

  <xsl:template match="cell" mode="value">
    <xsl:param name="type"/>
    <xsl:variable name="length" select="coordinate[count(../*) = 1 and number(.) = number(.)]"/>
    <xsl:variable name="text"><xsl:apply-templates/></xsl:variable>
    <xsl:choose>
      <xsl:when test="$length">
        <xsl:value-of select="concat('{&quot;coordinate&quot;: ', number($length), ', &quot;mm&quot;: ')"/>
        <xsl:call-template name="length">
          <xsl:with-param name="value" select="$length"/><xsl:with-param name="in">mm</xsl:with-param>
        </xsl:call-template>
        <xsl:text>, "mil": </xsl:text>
        <xsl:call-template name="length">
          <xsl:with-param name="value" select="$length"/><xsl:with-param name="in">mil</xsl:with-param>
        </xsl:call-template>
        <xsl:text>}</xsl:text>
      </xsl:when>
      <!-- Infinity is a number in XPath and none in JSON. -->
      <xsl:when test="$type = 'number' and number($text) - number($text) = 0"><xsl:value-of select="number($text)"/></xsl:when>
      <xsl:otherwise>
        <xsl:call-template name="quote"><xsl:with-param name="text" select="string($text)"/></xsl:call-template>
      </xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <xsl:template name="quote">
    <xsl:param name="text"/>
    <xsl:text>"</xsl:text>
    <xsl:call-template name="escaped"><xsl:with-param name="text" select="$text"/></xsl:call-template>
    <xsl:text>"</xsl:text>
  </xsl:template>

  <!-- Up to the first character that JSON escapes, that one, and the rest: by halves, so that a long text does
       not need a deep stack. -->
  <xsl:template name="escaped">
    <xsl:param name="text"/>
    <xsl:variable name="plain" select="translate($text, '\&quot;&#9;&#10;&#13;', '')"/>
    <xsl:variable name="half" select="floor(string-length($text) div 2)"/>
    <xsl:choose>
      <xsl:when test="$plain = $text"><xsl:value-of select="$text"/></xsl:when>
      <xsl:when test="$half &gt; 0">
        <xsl:call-template name="escaped"><xsl:with-param name="text" select="substring($text, 1, $half)"/></xsl:call-template>
        <xsl:call-template name="escaped"><xsl:with-param name="text" select="substring($text, $half + 1)"/></xsl:call-template>
      </xsl:when>
      <xsl:when test="$text = '&#9;'">\t</xsl:when>
      <xsl:when test="$text = '&#10;'">\n</xsl:when>
      <xsl:when test="$text = '&#13;'">\r</xsl:when>
      <xsl:otherwise><xsl:value-of select="concat('\', $text)"/></xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <xsl:template match="coordinate">
    <xsl:call-template name="length"><xsl:with-param name="value" select="."/></xsl:call-template>
    <xsl:value-of select="concat(' ', $unit)"/>
  </xsl:template>
  <xsl:template match="units"><xsl:value-of select="$unit"/></xsl:template>
  <xsl:template match="space"><xsl:text> </xsl:text></xsl:template>
  <xsl:template match="linebreak"><xsl:text>&#10;</xsl:text></xsl:template>
  <xsl:template match="hyperlink">
    <xsl:value-of select="@description"/><xsl:if test="@description = ''"><xsl:value-of select="@address"/></xsl:if>
  </xsl:template>
  <xsl:template match="image"><xsl:value-of select="@filename"/></xsl:template>
  <xsl:template match="text | file"><xsl:value-of select="."/></xsl:template>

</xsl:stylesheet>
