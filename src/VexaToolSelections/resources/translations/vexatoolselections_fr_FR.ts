<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr_FR">
<context>
    <name>VexaToolSelectionWidgetClass</name>
    <message>
        <source>New</source>
        <translation>Nouvelle</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Ajouter</translation>
    </message>
    <message>
        <source>Substract</source>
        <translation>Soustraire</translation>
    </message>
    <message>
        <source>Intersect</source>
        <translation>Intersection</translation>
    </message>
    <message>
        <source>Feather:</source>
        <translation>Contour progressif :</translation>
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
        <translation>Alt+Z supprime/rétablit le dernier point, double-clic pour fermer le tracé</translation>
    </message>
</context>
</TS>
