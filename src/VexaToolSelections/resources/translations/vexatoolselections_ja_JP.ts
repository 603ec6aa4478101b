<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja_JP">
<context>
    <name>VexaToolSelectionWidgetClass</name>
    <message>
        <source>New</source>
        <translation>新規</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>追加</translation>
    </message>
    <message>
        <source>Substract</source>
        <translation>削除</translation>
    </message>
    <message>
        <source>Intersect</source>
        <translation>交差</translation>
    </message>
    <message>
        <source>Feather:</source>
        <translation>ぼかし:</translation>
    </message>
    <message>
        <source>px</source>
        <translation>px</translation>
    </message>
</context>
<context>
    <name>VexaToolLassoPolygon</name>
    <message>
        <source>Alt+Z to delete/recover latest point, double click to close the path</source>
        <translation>Alt+Z で最後の点を削除/復元、ダブルクリックでパスを閉じる</translation>
    </message>
</context>
</TS>
