<?xml version="1.0" encoding="UTF-8"?>
<!-- What the style sheets share: lengths and units, the columns of tables, names of files. -->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">

  <!-- The unit that the reader sees first. -->
  <xsl:variable name="unit">
    <xsl:choose>
      <xsl:when test="/report/units/@default = 'mil'">mil</xsl:when>
      <xsl:otherwise>mm</xsl:otherwise>
    </xsl:choose>
  </xsl:variable>

  <!-- A length of 1/10000 mil in that unit, as a number. -->
  <xsl:template name="length">
    <xsl:param name="value"/>
    <xsl:param name="in" select="$unit"/>
    <xsl:choose>
      <xsl:when test="not(number($value) = number($value))"><xsl:value-of select="$value"/></xsl:when>
      <xsl:when test="$in = 'mil'"><xsl:value-of select="format-number($value div 10000, '0.###')"/></xsl:when>
      <xsl:otherwise><xsl:value-of select="format-number($value * 0.00000254, '0.####')"/></xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <!-- The header of a column, which stands over cell number `position` of each row. -->
  <xsl:key name="leaves" match="columns//column[not(subcolumns/column)]"
           use="generate-id(ancestor::columns[1])"/>

  <!-- The name of a file without its folders. -->
  <xsl:template name="file-name">
    <xsl:param name="path"/>
    <xsl:variable name="slashes" select="translate($path, '\', '/')"/>
    <xsl:choose>
      <xsl:when test="contains($slashes, '/')">
        <xsl:call-template name="file-name">
          <xsl:with-param name="path" select="substring-after($slashes, '/')"/>
        </xsl:call-template>
      </xsl:when>
      <xsl:otherwise><xsl:value-of select="$slashes"/></xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <!-- A name without what is behind its last point. -->
  <xsl:template name="stem">
    <xsl:param name="name"/>
    <xsl:if test="contains($name, '.')">
      <xsl:value-of select="substring-before($name, '.')"/>
      <xsl:if test="contains(substring-after($name, '.'), '.')">
        <xsl:text>.</xsl:text>
        <xsl:call-template name="stem">
          <xsl:with-param name="name" select="substring-after($name, '.')"/>
        </xsl:call-template>
      </xsl:if>
    </xsl:if>
    <xsl:if test="not(contains($name, '.'))"><xsl:value-of select="$name"/></xsl:if>
  </xsl:template>

  <!-- The path of the document that the report is on. -->
  <xsl:variable name="document" select="string(/report/filename/file/@filename)"/>

</xsl:stylesheet>
