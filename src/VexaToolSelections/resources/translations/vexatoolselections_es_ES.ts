<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es_ES">
<context>
    <name>VexaToolSelectionWidgetClass</name>
    <message>
        <source>New</source>
        <translation>Nueva</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Añadir</translation>
    </message>
    <message>
        <source>Substract</source>
        <translation>Restar</translation>
    </message>
    <message>
        <source>Intersect</source>
        <translation>Intersecar</translation>
    </message>
    <message>
        <source>Feather:</source>
        <translation>Desvanecer:</translation>
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
        <translation>Alt+Z elimina/recupera el último punto, doble clic para cerrar el trazado</translation>
    </message>
</context>
</TS>
