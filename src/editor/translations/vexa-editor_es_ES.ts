<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es_ES">
<context>
    <name>VexaActionManager</name>
    <message>
        <source>Delete</source>
        <translation>Eliminar</translation>
    </message>
</context>
<context>
    <name>VexaContext</name>
    <message>
        <source>The image is empty: a document needs at least one pixel.</source>
        <translation>La imagen está vacía: un documento necesita al menos un píxel.</translation>
    </message>
    <message>
        <source>Background</source>
        <translation>Fondo</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Eliminar</translation>
    </message>
</context>
<context>
    <name>VexaEditorWindow</name>
    <message>
        <source>%1, %2  (%3 %)</source>
        <translation>%1, %2  (%3 %)</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Archivo</translation>
    </message>
    <message>
        <source>&amp;Open...</source>
        <translation>&amp;Abrir...</translation>
    </message>
    <message>
        <source>Save &amp;Image As...</source>
        <translation>Guardar &amp;imagen como...</translation>
    </message>
    <message>
        <source>&amp;Export Selection Mask...</source>
        <translation>&amp;Exportar máscara de selección...</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Salir</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Edición</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Deshacer</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Rehacer</translation>
    </message>
    <message>
        <source>Undo Tool Step</source>
        <translation>Deshacer paso de la herramienta</translation>
    </message>
    <message>
        <source>Alt+Z</source>
        <translatorcomment>notr: key sequence, parsed by QKeySequence in its portable form</translatorcomment>
        <translation>Alt+Z</translation>
    </message>
    <message>
        <source>Redo Tool Step</source>
        <translation>Rehacer paso de la herramienta</translation>
    </message>
    <message>
        <source>Alt+Shift+Z</source>
        <translatorcomment>notr: key sequence, parsed by QKeySequence in its portable form</translatorcomment>
        <translation>Alt+Shift+Z</translation>
    </message>
    <message>
        <source>&amp;Select</source>
        <translation>&amp;Selección</translation>
    </message>
    <message>
        <source>&amp;All</source>
        <translation>&amp;Todo</translation>
    </message>
    <message>
        <source>&amp;None</source>
        <translation>&amp;Deseleccionar</translation>
    </message>
    <message>
        <source>Ctrl+D</source>
        <translatorcomment>notr: key sequence, parsed by QKeySequence in its portable form</translatorcomment>
        <translation>Ctrl+D</translation>
    </message>
    <message>
        <source>&amp;Invert</source>
        <translation>&amp;Invertir</translation>
    </message>
    <message>
        <source>Ctrl+Shift+I</source>
        <translatorcomment>notr: key sequence, parsed by QKeySequence in its portable form</translatorcomment>
        <translation>Ctrl+Shift+I</translation>
    </message>
    <message>
        <source>Tools</source>
        <translation>Herramientas</translation>
    </message>
    <message>
        <source>%1 is not available in this build of the plug-in</source>
        <translation>%1 no está disponible en esta versión del complemento</translation>
    </message>
    <message>
        <source>Foreground colour</source>
        <translation>Color frontal</translation>
    </message>
    <message>
        <source>Tool options</source>
        <translation>Opciones de herramienta</translation>
    </message>
    <message>
        <source>Cannot open %1: %2</source>
        <translation>No se puede abrir %1: %2</translation>
    </message>
    <message>
        <source>There is no document to save.</source>
        <translation>No hay ningún documento que guardar.</translation>
    </message>
    <message>
        <source>Cannot write %1.</source>
        <translation>No se puede escribir %1.</translation>
    </message>
    <message>
        <source>There is no document.</source>
        <translation>No hay ningún documento.</translation>
    </message>
    <message>
        <source>No document</source>
        <translation>Sin documento</translation>
    </message>
    <message>
        <source>%1 - Vexa Selections</source>
        <translation>%1 - Vexa Selections</translation>
    </message>
    <message>
        <source>Open Image</source>
        <translation>Abrir imagen</translation>
    </message>
    <message>
        <source>Images (*.png *.jpg *.jpeg *.bmp *.gif *.tif *.tiff *.webp)</source>
        <translation>Imágenes (*.png *.jpg *.jpeg *.bmp *.gif *.tif *.tiff *.webp)</translation>
    </message>
    <message>
        <source>Save Image</source>
        <translation>Guardar imagen</translation>
    </message>
    <message>
        <source>PNG image (*.png)</source>
        <translation>Imagen PNG (*.png)</translation>
    </message>
    <message>
        <source>Export Selection Mask</source>
        <translation>Exportar máscara de selección</translation>
    </message>
</context>
<context>
    <name>VexaPluginLoader</name>
    <message>
        <source>The plug-in file %1 does not exist.</source>
        <translation>El archivo del complemento %1 no existe.</translation>
    </message>
    <message>
        <source>The plug-in %1 cannot be loaded: %2</source>
        <translation>No se puede cargar el complemento %1: %2</translation>
    </message>
    <message>
        <source>%1 is not a tools plug-in: it lacks %2.</source>
        <translation>%1 no es un complemento de herramientas: le falta %2.</translation>
    </message>
</context>
<context>
    <name>VexaSelection</name>
    <message>
        <source>Selection</source>
        <translation>Selección</translation>
    </message>
    <message>
        <source>Deselect</source>
        <translation>Deseleccionar</translation>
    </message>
    <message>
        <source>Invert Selection</source>
        <translation>Invertir selección</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Seleccionar todo</translation>
    </message>
    <message>
        <source>Move Selection</source>
        <translation>Mover selección</translation>
    </message>
</context>
</TS>
