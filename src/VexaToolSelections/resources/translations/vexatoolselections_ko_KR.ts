<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ko_KR">
<context>
    <name>VexaToolSelectionWidgetClass</name>
    <message>
        <source>New</source>
        <translation>새로 만들기</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>추가</translation>
    </message>
    <message>
        <source>Substract</source>
        <translation>빼기</translation>
    </message>
    <message>
        <source>Intersect</source>
        <translation>교차</translation>
    </message>
    <message>
        <source>Feather:</source>
        <translation>페더:</translation>
    </message>
    <message>
        <source>px</source>
        <translation>픽셀</translation>
    </message>
</context>
<context>
    <name>VexaToolLassoPolygon</name>
    <message>
        <source>Alt+Z to delete/recover latest point, double click to close the path</source>
        <translation>Alt+Z로 마지막 점 삭제/복구, 더블 클릭으로 경로 닫기</translation>
    </message>
</context>
</TS>
