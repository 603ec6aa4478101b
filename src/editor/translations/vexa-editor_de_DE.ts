<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>VexaActionManager</name>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
</context>
<context>
    <name>VexaContext</name>
    <message>
        <source>The image is empty: a document needs at least one pixel.</source>
        <translation>Das Bild ist leer: Ein Dokument braucht mindestens ein Pixel.</translation>
    </message>
    <message>
        <source>Background</source>
        <translation>Hintergrund</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>The image is too large: a document holds at most about two billion pixels.</source>
        <translation>Das Bild ist zu groß: Ein Dokument fasst höchstens etwa zwei Milliarden Pixel.</translation>
    </message>
    <message>
        <source>Not enough memory for a %1 x %2 image (%3 MB).</source>
        <translation>Nicht genug Speicher für ein Bild von %1 x %2 (%3 MB).</translation>
    </message>
</context>
<context>
    <name>VexaEditorWindow</name>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Open...</source>
        <translation>Ö&amp;ffnen...</translation>
    </message>
    <message>
        <source>Save &amp;Image As...</source>
        <translation>Bild speichern &amp;unter...</translation>
    </message>
    <message>
        <source>&amp;Export Selection Mask...</source>
        <translation>Auswahlmaske &amp;exportieren...</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Rückgängig</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Wiederholen</translation>
    </message>
    <message>
        <source>Undo Tool Step</source>
        <translation>Werkzeugschritt rückgängig</translation>
    </message>
    <message>
        <source>Alt+Z</source>
        <translatorcomment>notr: key sequence, parsed by QKeySequence in its portable form</translatorcomment>
        <translation>Alt+Z</translation>
    </message>
    <message>
        <source>Redo Tool Step</source>
        <translation>Werkzeugschritt wiederholen</translation>
    </message>
    <message>
        <source>Alt+Shift+Z</source>
        <translatorcomment>notr: key sequence, parsed by QKeySequence in its portable form</translatorcomment>
        <translation>Alt+Shift+Z</translation>
    </message>
    <message>
        <source>&amp;Select</source>
        <translation>&amp;Auswahl</translation>
    </message>
    <message>
        <source>&amp;All</source>
        <translation>&amp;Alles auswählen</translation>
    </message>
    <message>
        <source>&amp;None</source>
        <translation>Auswahl auf&amp;heben</translation>
    </message>
    <message>
        <source>Ctrl+D</source>
        <translatorcomment>notr: key sequence, parsed by QKeySequence in its portable form</translatorcomment>
        <translation>Ctrl+D</translation>
    </message>
    <message>
        <source>&amp;Invert</source>
        <translation>Auswahl &amp;umkehren</translation>
    </message>
    <message>
        <source>Ctrl+Shift+I</source>
        <translatorcomment>notr: key sequence, parsed by QKeySequence in its portable form</translatorcomment>
        <translation>Ctrl+Shift+I</translation>
    </message>
    <message>
        <source>Tools</source>
        <translation>Werkzeuge</translation>
    </message>
    <message>
        <source>%1 is not available in this build of the plug-in</source>
        <translation>%1 ist in diesem Build des Plug-ins nicht verfügbar</translation>
    </message>
    <message>
        <source>Foreground colour</source>
        <translation>Vordergrundfarbe</translation>
    </message>
    <message>
        <source>Tool options</source>
        <translation>Werkzeugoptionen</translation>
    </message>
    <message>
        <source>Cannot open %1: %2</source>
        <translation>%1 kann nicht geöffnet werden: %2</translation>
    </message>
    <message>
        <source>There is no document to save.</source>
        <translation>Es gibt kein Dokument zum Speichern.</translation>
    </message>
    <message>
        <source>Cannot write %1.</source>
        <translation type="vanished">%1 kann nicht geschrieben werden.</translation>
    </message>
    <message>
        <source>There is no document.</source>
        <translation>Es ist kein Dokument geöffnet.</translation>
    </message>
    <message>
        <source>No document</source>
        <translation>Kein Dokument</translation>
    </message>
    <message>
        <source>%1 - Vexa Selections</source>
        <translation>%1 - Vexa Selections</translation>
    </message>
    <message>
        <source>Open Image</source>
        <translation>Bild öffnen</translation>
    </message>
    <message>
        <source>Images (*.png *.jpg *.jpeg *.bmp *.gif *.tif *.tiff *.webp)</source>
        <translation type="vanished">Bilder (*.png *.jpg *.jpeg *.bmp *.gif *.tif *.tiff *.webp)</translation>
    </message>
    <message>
        <source>Save Image</source>
        <translation>Bild speichern</translation>
    </message>
    <message>
        <source>PNG image (*.png)</source>
        <translation>PNG-Bild (*.png)</translation>
    </message>
    <message>
        <source>Export Selection Mask</source>
        <translation>Auswahlmaske exportieren</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>Matting View…</source>
        <translation>Freistellungsansicht…</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>A&amp;nsicht</translation>
    </message>
    <message>
        <source>Zoom &amp;In</source>
        <translation>&amp;Einzoomen</translation>
    </message>
    <message>
        <source>Zoom &amp;Out</source>
        <translation>&amp;Auszoomen</translation>
    </message>
    <message>
        <source>&amp;Fit to Window</source>
        <translation>An &amp;Fenster anpassen</translation>
    </message>
    <message>
        <source>Ctrl+0</source>
        <translatorcomment>notr: key sequence, parsed by QKeySequence in its portable form</translatorcomment>
        <translation>Ctrl+0</translation>
    </message>
    <message>
        <source>&amp;100 %</source>
        <translation>&amp;100 %</translation>
    </message>
    <message>
        <source>Ctrl+1</source>
        <translatorcomment>notr: key sequence, parsed by QKeySequence in its portable form</translatorcomment>
        <translation>Ctrl+1</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1 %</translation>
    </message>
    <message>
        <source>&amp;Undo %1</source>
        <translation>&amp;Rückgängig: %1</translation>
    </message>
    <message>
        <source>&amp;Redo %1</source>
        <translation>&amp;Wiederholen: %1</translation>
    </message>
    <message>
        <source>Images (%1)</source>
        <translation>Bilder (%1)</translation>
    </message>
    <message>
        <source>Opening %1…</source>
        <translation>%1 wird geöffnet …</translation>
    </message>
    <message>
        <source>Saving %1…</source>
        <translation>%1 wird gespeichert …</translation>
    </message>
</context>
<context>
    <name>VexaImageFile</name>
    <message>
        <source>%1 GB</source>
        <translation>%1 GB</translation>
    </message>
    <message>
        <source>%1 MB</source>
        <translation>%1 MB</translation>
    </message>
    <message>
        <source>too large: %1 x %2 needs %3, more than the %4 this machine allows for one image</source>
        <translation>zu groß: %1 x %2 braucht %3, mehr als die %4, die dieser Rechner für ein Bild zulässt</translation>
    </message>
    <message>
        <source>empty file</source>
        <translation>leere Datei</translation>
    </message>
    <message>
        <source>not enough memory to convert the %1 x %2 picture to 8 bits a channel</source>
        <translation>nicht genug Speicher, um das Bild von %1 x %2 in 8 Bit je Kanal umzuwandeln</translation>
    </message>
    <message>
        <source>damaged file: it ends before the data it declares</source>
        <translation>beschädigte Datei: sie endet vor den Daten, die sie angibt</translation>
    </message>
</context>
<context>
    <name>VexaImageSave</name>
    <message>
        <source>Cannot write %1: the name has no suffix of an image format written here (such as .png).</source>
        <translation>%1 kann nicht geschrieben werden: Der Name endet nicht auf die Endung eines hier geschriebenen Bildformats (etwa .png).</translation>
    </message>
    <message>
        <source>Cannot write %1: %2</source>
        <translation>%1 kann nicht geschrieben werden: %2</translation>
    </message>
    <message>
        <source>the disk is full or the file too large for it</source>
        <translation>der Datenträger ist voll oder die Datei zu groß für ihn</translation>
    </message>
</context>
<context>
    <name>VexaMattingWindow</name>
    <message>
        <source>Matting View</source>
        <translation>Freistellungsansicht</translation>
    </message>
    <message>
        <source>This build of the plug-in has no matting view.</source>
        <translation>Dieser Build des Plug-ins hat keine Freistellungsansicht.</translation>
    </message>
    <message>
        <source>Matting</source>
        <translation>Freistellen</translation>
    </message>
    <message>
        <source>Marks:</source>
        <translation>Markierungen:</translation>
    </message>
    <message>
        <source>Left object, right unknown, middle erases</source>
        <translation type="vanished">Links: Objekt, rechts: unbekannt, Mitte: radieren</translation>
    </message>
    <message>
        <source>Left background, right object, middle unknown</source>
        <translation>Links: Hintergrund, rechts: Objekt, Mitte: unbekannt</translation>
    </message>
    <message>
        <source>Left unknown, right object, middle erases</source>
        <translation>Links: unbekannt, rechts: Objekt, Mitte: radieren</translation>
    </message>
    <message>
        <source>What the mouse buttons paint</source>
        <translation>Was die Maustasten malen</translation>
    </message>
    <message>
        <source> Brush:</source>
        <translation> Pinsel:</translation>
    </message>
    <message>
        <source> px</source>
        <translation> Px</translation>
    </message>
    <message>
        <source>Half-width of a stroke; also the number of smoothing passes of Matte</source>
        <translation type="vanished">Halbe Strichbreite; zugleich die Zahl der Glättungsdurchgänge von „Freistellung“</translation>
    </message>
    <message>
        <source>Auto Flood</source>
        <translation>Automatisch füllen</translation>
    </message>
    <message>
        <source>Flood 16 pixels after each object stroke</source>
        <translation>Nach jedem Objektstrich 16 Pixel füllen</translation>
    </message>
    <message>
        <source>Flood</source>
        <translation>Füllen</translation>
    </message>
    <message>
        <source>Grow the object and background marks up to the unknown band</source>
        <translation>Objekt- und Hintergrundmarkierungen bis an den unbekannten Randstreifen ausdehnen</translation>
    </message>
    <message>
        <source>Matte</source>
        <translation>Freistellung</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Zurücksetzen</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>Bild</translation>
    </message>
    <message>
        <source>Composite</source>
        <translation>Gesamtbild</translation>
    </message>
    <message>
        <source>Use as selection</source>
        <translation>Als Auswahl verwenden</translation>
    </message>
    <message>
        <source>The matte is now the selection.</source>
        <translation>Die Freistellung ist jetzt die Auswahl.</translation>
    </message>
    <message>
        <source>Paint an unknown band along the edge, object and background inside and outside it, then Flood and Matte.</source>
        <translation type="vanished">Malen Sie einen unbekannten Streifen entlang der Kante, innen das Objekt und außen den Hintergrund, dann „Füllen“ und „Freistellung“.</translation>
    </message>
    <message>
        <source>The document this matte was made for is closed.</source>
        <translation>Das Dokument, für das diese Freistellung erstellt wurde, ist geschlossen.</translation>
    </message>
    <message>
        <source>The document has changed size since the matting view opened.</source>
        <translation>Die Größe des Dokuments hat sich geändert, seit die Freistellungsansicht geöffnet wurde.</translation>
    </message>
    <message>
        <source>There is no matte yet.</source>
        <translation>Es gibt noch keine Freistellung.</translation>
    </message>
    <message>
        <source>Left object, Shift + left background, right unknown, middle erases</source>
        <translation>Links: Objekt, Umschalt + links: Hintergrund, rechts: unbekannt, Mitte: radieren</translation>
    </message>
    <message>
        <source>Half-width of a stroke; also the number of smoothing passes of Compute Matte</source>
        <translation>Halbe Strichbreite; zugleich die Zahl der Glättungsdurchgänge von „Freistellung berechnen“</translation>
    </message>
    <message>
        <source>Compute Matte</source>
        <translation>Freistellung berechnen</translation>
    </message>
    <message>
        <source>Turn the marks into a trimap and refine its unknown band into the matte</source>
        <translation>Die Markierungen in eine Trimap umwandeln und deren unbekannten Streifen zur Freistellung verfeinern</translation>
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
        <source>Show:</source>
        <translation>Anzeigen:</translation>
    </message>
    <message>
        <source>Paint an unknown band along the edge with the right button, the object inside it with the left and the background outside it with Shift + left, then Flood and Compute Matte.</source>
        <translation>Malen Sie mit der rechten Taste einen unbekannten Streifen entlang der Kante, mit der linken das Objekt darin und mit Umschalt + links den Hintergrund außerhalb, dann „Füllen“ und „Freistellung berechnen“.</translation>
    </message>
    <message>
        <source>Wheel: zoom about the pointer; Space + drag: move; Ctrl+0: fit; Ctrl+1: 100 %</source>
        <translation>Mausrad: um den Zeiger zoomen; Leertaste + Ziehen: verschieben; Strg+0: einpassen; Strg+1: 100 %</translation>
    </message>
    <message>
        <source>Fit to Window</source>
        <translation>An Fenster anpassen</translation>
    </message>
    <message>
        <source>100 %</source>
        <translation>100 %</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1 %</translation>
    </message>
</context>
<context>
    <name>VexaPluginLoader</name>
    <message>
        <source>The plug-in file %1 does not exist.</source>
        <translation>Die Plug-in-Datei %1 existiert nicht.</translation>
    </message>
    <message>
        <source>The plug-in %1 cannot be loaded: %2</source>
        <translation>Das Plug-in %1 kann nicht geladen werden: %2</translation>
    </message>
    <message>
        <source>%1 is not a tools plug-in: it lacks %2.</source>
        <translation>%1 ist kein Werkzeug-Plug-in: Es fehlt %2.</translation>
    </message>
</context>
<context>
    <name>VexaSelection</name>
    <message>
        <source>Selection</source>
        <translation>Auswahl</translation>
    </message>
    <message>
        <source>Deselect</source>
        <translation>Auswahl aufheben</translation>
    </message>
    <message>
        <source>Invert Selection</source>
        <translation>Auswahl umkehren</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Alles auswählen</translation>
    </message>
    <message>
        <source>Move Selection</source>
        <translation>Auswahl verschieben</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>needs OpenGL 2.1 or later, and no usable OpenGL context could be created on this display (%1)</source>
        <translation>benötigt OpenGL 2.1 oder neuer, und auf dieser Anzeige ließ sich kein brauchbarer OpenGL-Kontext erstellen (%1)</translation>
    </message>
</context>
</TS>
