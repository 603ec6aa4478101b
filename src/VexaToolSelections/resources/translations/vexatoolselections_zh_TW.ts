<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_TW">
<context>
    <name>VexaToolSelectionWidgetClass</name>
    <message>
        <source>New</source>
        <translation>新選取範圍</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>增加至選取範圍</translation>
    </message>
    <message>
        <source>Substract</source>
        <translation>從選取範圍減去</translation>
    </message>
    <message>
        <source>Intersect</source>
        <translation>與選取範圍相交</translation>
    </message>
    <message>
        <source>Feather:</source>
        <translation>羽化:</translation>
    </message>
    <message>
        <source>px</source>
        <translation>像素</translation>
    </message>
</context>
<context>
    <name>VexaToolLassoPolygon</name>
    <message>
        <source>Alt+Z to delete/recover latest point, double click to close the path</source>
        <translation>Alt+Z 刪除/恢復最近的點，按兩下封閉路徑</translation>
    </message>
</context>
</TS>
