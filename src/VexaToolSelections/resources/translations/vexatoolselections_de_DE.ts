<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>QuickSelectGLWidget</name>
    <message>
        <source>Failed to compile: &apos;TrimapShader.fp&apos;
</source>
        <translation>Kompilieren fehlgeschlagen: &apos;TrimapShader.fp&apos;
</translation>
    </message>
    <message>
        <source>Failed to compile: &apos;ExpandShader.fp&apos;
</source>
        <translation>Kompilieren fehlgeschlagen: &apos;ExpandShader.fp&apos;
</translation>
    </message>
    <message>
        <source>Failed to compile: &apos;FastFillShader.fp&apos;
</source>
        <translation>Kompilieren fehlgeschlagen: &apos;FastFillShader.fp&apos;
</translation>
    </message>
    <message>
        <source>Failed to compile: &apos;RobustShader.fp&apos;
</source>
        <translation>Kompilieren fehlgeschlagen: &apos;RobustShader.fp&apos;
</translation>
    </message>
    <message>
        <source>Failed to compile: &apos;closedShader.fp&apos;
</source>
        <translation>Kompilieren fehlgeschlagen: &apos;closedShader.fp&apos;
</translation>
    </message>
    <message>
        <source>Failed to compile: &apos;resultShader.fp&apos;
</source>
        <translation>Kompilieren fehlgeschlagen: &apos;resultShader.fp&apos;
</translation>
    </message>
    <message>
        <source>Failed to link &apos;TrimapShader&apos;
</source>
        <translation>Linken fehlgeschlagen: &apos;TrimapShader&apos;
</translation>
    </message>
    <message>
        <source>Failed to link &apos;ExpandShader&apos;
</source>
        <translation>Linken fehlgeschlagen: &apos;ExpandShader&apos;
</translation>
    </message>
    <message>
        <source>Failed to link &apos;FastFillShader&apos;
</source>
        <translation>Linken fehlgeschlagen: &apos;FastFillShader&apos;
</translation>
    </message>
    <message>
        <source>Failed to link &apos;RobustShader&apos;
</source>
        <translation>Linken fehlgeschlagen: &apos;RobustShader&apos;
</translation>
    </message>
    <message>
        <source>Failed to link &apos;closedShader&apos;
</source>
        <translation>Linken fehlgeschlagen: &apos;closedShader&apos;
</translation>
    </message>
    <message>
        <source>Failed to link &apos;resultShader&apos;
</source>
        <translation>Linken fehlgeschlagen: &apos;resultShader&apos;
</translation>
    </message>
    <message>
        <source>Failed to open file:
&apos;%1&apos;.</source>
        <translation>Die Datei konnte nicht geöffnet werden:
&apos;%1&apos;.</translation>
    </message>
    <message>
        <source>The matting view needs OpenGL 2.1; this driver offers only %1 %2.%3.</source>
        <translation>Die Matting-Ansicht braucht OpenGL 2.1; dieser Treiber bietet nur %1 %2.%3.</translation>
    </message>
    <message>
        <source>The image is %1 x %2 pixels, larger than this OpenGL&apos;s largest texture (%3 pixels a side).</source>
        <translation>Das Bild ist %1 x %2 Pixel groß und damit größer als die größte Textur dieses OpenGL (%3 Pixel je Seite).</translation>
    </message>
    <message>
        <source>This OpenGL cannot render into a %1 x %2 texture.</source>
        <translation>Dieses OpenGL kann nicht in eine Textur von %1 x %2 zeichnen.</translation>
    </message>
</context>
<context>
    <name>Thread</name>
    <message>
        <source>Initializing ..</source>
        <translation>Initialisierung ..</translation>
    </message>
    <message>
        <source>Initialize done.</source>
        <translation>Initialisierung abgeschlossen.</translation>
    </message>
    <message>
        <source>Marking..</source>
        <translation>Markieren ..</translation>
    </message>
    <message>
        <source>Mark done</source>
        <translation>Markieren abgeschlossen</translation>
    </message>
    <message>
        <source>Please mark foreground objects.</source>
        <translation>Bitte markieren Sie die Objekte im Vordergrund.</translation>
    </message>
    <message>
        <source>Please mark background regions.</source>
        <translation>Bitte markieren Sie Bereiche im Hintergrund.</translation>
    </message>
    <message>
        <source>Alpha Extracting ..</source>
        <translation>Alpha wird extrahiert ..</translation>
    </message>
    <message>
        <source>Alpha Extract done ..</source>
        <translation>Alpha-Extraktion abgeschlossen ..</translation>
    </message>
    <message>
        <source>Refining Edges ..</source>
        <translation>Kanten werden verfeinert ..</translation>
    </message>
</context>
<context>
    <name>VexaToolLassoPolygon</name>
    <message>
        <source>Alt+Z to delete/recover latest point, double click to close the path</source>
        <translation>Alt+Z löscht den letzten Punkt oder stellt ihn wieder her, Doppelklick schließt den Pfad</translation>
    </message>
</context>
<context>
    <name>VexaToolLassoPolygonWidgetClass</name>
    <message>
        <source>Polygon Lasso Window</source>
        <translation>Polygon-Lasso</translation>
    </message>
    <message>
        <source>Control Points:</source>
        <translation>Eckpunkte:</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Rückgängig</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Wiederholen</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Löschen</translation>
    </message>
</context>
<context>
    <name>VexaToolMagicSelectWidgetClass</name>
    <message>
        <source>VexaToolMagicSelectWidget</source>
        <translatorcomment>notr: object name of the panel, shown nowhere</translatorcomment>
        <translation>VexaToolMagicSelectWidget</translation>
    </message>
    <message>
        <source>Threshold:</source>
        <translation>Schwellenwert:</translation>
    </message>
    <message>
        <source>32</source>
        <translatorcomment>notr: initial value of the threshold field</translatorcomment>
        <translation>32</translation>
    </message>
</context>
<context>
    <name>VexaToolQuickSelect</name>
    <message>
        <source>Quick Select</source>
        <translation>Schnellauswahl</translation>
    </message>
    <message>
        <source>Applying...</source>
        <translation>Wird angewendet ...</translation>
    </message>
</context>
<context>
    <name>VexaToolQuickSelectWidget</name>
    <message>
        <source>Quick Select Tool</source>
        <translation>Schnellauswahlwerkzeug</translation>
    </message>
    <message>
        <source>Step1:Mark Fore/Background</source>
        <translation>Schritt 1: Vorder-/Hintergrund markieren</translation>
    </message>
    <message>
        <source>Mark Foreground</source>
        <translation>Vordergrund markieren</translation>
    </message>
    <message>
        <source>Mark Background</source>
        <translation>Hintergrund markieren</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>Vorschau</translation>
    </message>
    <message>
        <source>Step2:Modify Boundary</source>
        <translation>Schritt 2: Kante bearbeiten</translation>
    </message>
    <message>
        <source>Mark Boundary</source>
        <translation>Kante markieren</translation>
    </message>
    <message>
        <source>Clear Marks</source>
        <translation type="vanished">Markierungen löschen</translation>
    </message>
    <message>
        <source>Alpha Extract</source>
        <translation>Alpha extrahieren</translation>
    </message>
    <message>
        <source>Pen settings</source>
        <translation>Pinseleinstellungen</translation>
    </message>
    <message>
        <source>Mark Radius: </source>
        <translation>Pinselradius: </translation>
    </message>
    <message>
        <source>Sensitivity: </source>
        <translation>Empfindlichkeit: </translation>
    </message>
    <message>
        <source>View Settings</source>
        <translation>Ansicht</translation>
    </message>
    <message>
        <source>Show User Marks</source>
        <translation>Markierungen anzeigen</translation>
    </message>
    <message>
        <source>View Image</source>
        <translation>Bild anzeigen</translation>
    </message>
    <message>
        <source>View Matte</source>
        <translation>Freistellung anzeigen</translation>
    </message>
    <message>
        <source>View Alpha</source>
        <translation>Alpha anzeigen</translation>
    </message>
    <message>
        <source>View Nodes</source>
        <translation>Knoten anzeigen</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Zurücksetzen</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Initializing...</source>
        <translation>Initialisierung...</translation>
    </message>
    <message>
        <source>Save Image</source>
        <translation>Bild speichern</translation>
    </message>
    <message>
        <source>Image Files (*.bmp *.gif *.jpg *.jpeg *.png)</source>
        <translation>Bilddateien (*.bmp *.gif *.jpg *.jpeg *.png)</translation>
    </message>
    <message>
        <source>The document could not be rendered: there is nothing to select from.</source>
        <translation>Das Dokument konnte nicht gerendert werden: Es gibt nichts, woraus ausgewählt werden kann.</translation>
    </message>
    <message>
        <source>Refine Edges</source>
        <translation>Kanten verfeinern</translation>
    </message>
    <message>
        <source>Paint foreground marks (F)</source>
        <translation>Vordergrund markieren (F)</translation>
    </message>
    <message>
        <source>Paint background marks (B)</source>
        <translation>Hintergrund markieren (B)</translation>
    </message>
    <message>
        <source>Paint the boundary band by hand (M)</source>
        <translation>Randstreifen von Hand malen (M)</translation>
    </message>
    <message>
        <source>Erase the marks you paint over (E)</source>
        <translation>Übermalte Markierungen löschen (E)</translation>
    </message>
    <message>
        <source>Cut the object out along the marks (P)</source>
        <translation>Objekt entlang der Markierungen ausschneiden (P)</translation>
    </message>
    <message>
        <source>Turn the boundary band into soft edges (A)</source>
        <translation>Randstreifen in weiche Kanten umwandeln (A)</translation>
    </message>
    <message>
        <source>Erase Marks</source>
        <translation>Markierungen radieren</translation>
    </message>
</context>
<context>
    <name>VexaToolRectangularMarqueeWidgetClass</name>
    <message>
        <source>VexaToolRectangularMarqueeWidget</source>
        <translatorcomment>notr: object name of the panel, shown nowhere</translatorcomment>
        <translation>VexaToolRectangularMarqueeWidget</translation>
    </message>
    <message>
        <source>X:</source>
        <translation>X:</translation>
    </message>
    <message>
        <source>Y:</source>
        <translation>Y:</translation>
    </message>
    <message>
        <source>W:</source>
        <translation>B:</translation>
    </message>
    <message>
        <source>H:</source>
        <translation>H:</translation>
    </message>
    <message>
        <source>Ok</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>VexaToolSelectionColorRangeWidgetClass</name>
    <message>
        <source>Color Range</source>
        <translation>Farbbereich</translation>
    </message>
    <message>
        <source>Select Color</source>
        <translation>Farbe auswählen</translation>
    </message>
    <message>
        <source>From:</source>
        <translation>Quelle:</translation>
    </message>
    <message>
        <source>Color Picker</source>
        <translation>Pipette</translation>
    </message>
    <message>
        <source>Mode:</source>
        <translation>Modus:</translation>
    </message>
    <message>
        <source>Tolerance:</source>
        <translation>Toleranz:</translation>
    </message>
    <message>
        <source>Quick View:</source>
        <translation>Vorschau:</translation>
    </message>
    <message>
        <source>Selection</source>
        <translation>Auswahl</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>Bild</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>VexaToolSelectionWidget</name>
    <message>
        <source>Drag with the right mouse button to subtract in any mode</source>
        <translation>Mit der rechten Maustaste ziehen, um in jedem Modus abzuziehen</translation>
    </message>
</context>
<context>
    <name>VexaToolSelectionWidgetClass</name>
    <message>
        <source>VexaToolSelectionWidget</source>
        <translatorcomment>notr: object name of the panel, shown nowhere</translatorcomment>
        <translation>VexaToolSelectionWidget</translation>
    </message>
    <message>
        <source>New</source>
        <translation>Neue Auswahl</translation>
    </message>
    <message>
        <source>selection</source>
        <translatorcomment>notr: style-sheet hook (dynamic property class) of the mode buttons</translatorcomment>
        <translation>selection</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Der Auswahl hinzufügen</translation>
    </message>
    <message>
        <source>Substract</source>
        <translation>Von Auswahl abziehen</translation>
    </message>
    <message>
        <source>Intersect</source>
        <translation>Schnittmenge mit Auswahl</translation>
    </message>
    <message>
        <source>Feather:</source>
        <translation>Weiche Kante:</translation>
    </message>
    <message>
        <source>px</source>
        <translation>Px</translation>
    </message>
</context>
</TS>
