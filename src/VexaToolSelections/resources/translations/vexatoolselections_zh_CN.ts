<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>VexaToolSelectionWidgetClass</name>
    <message>
        <source>New</source>
        <translation>新选区</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>添加到选区</translation>
    </message>
    <message>
        <source>Substract</source>
        <translation>从选区减去</translation>
    </message>
    <message>
        <source>Intersect</source>
        <translation>与选区交叉</translation>
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
        <translation>Alt+Z 删除/恢复最近的点，双击闭合路径</translation>
    </message>
</context>
</TS>
