<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>VexaToolSelectionWidgetClass</name>
    <message>
        <source>New</source>
        <translation>Neu</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Hinzufügen</translation>
    </message>
    <message>
        <source>Substract</source>
        <translation>Abziehen</translation>
    </message>
    <message>
        <source>Intersect</source>
        <translation>Schnittmenge</translation>
    </message>
    <message>
        <source>Feather:</source>
        <translation>Weiche Kante:</translation>
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
        <translation>Alt+Z löscht den letzten Punkt bzw. stellt ihn wieder her, Doppelklick schließt den Pfad</translation>
    </message>
</context>
</TS>
