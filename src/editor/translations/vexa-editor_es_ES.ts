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
    <message>
        <source>The image is too large: a document holds at most about two billion pixels.</source>
        <translation>La imagen es demasiado grande: un documento admite como máximo unos dos mil millones de píxeles.</translation>
    </message>
    <message>
        <source>Not enough memory for a %1 x %2 image (%3 MB).</source>
        <translation>No hay memoria suficiente para una imagen de %1 x %2 (%3 MB).</translation>
    </message>
</context>
<context>
    <name>VexaEditorWindow</name>
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
        <translation type="vanished">No se puede escribir %1.</translation>
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
        <translation type="vanished">Imágenes (*.png *.jpg *.jpeg *.bmp *.gif *.tif *.tiff *.webp)</translation>
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
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>Matting View…</source>
        <translation>Vista de recorte…</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ver</translation>
    </message>
    <message>
        <source>Zoom &amp;In</source>
        <translation>&amp;Acercar</translation>
    </message>
    <message>
        <source>Zoom &amp;Out</source>
        <translation>A&amp;lejar</translation>
    </message>
    <message>
        <source>&amp;Fit to Window</source>
        <translation>Ajustar a la &amp;ventana</translation>
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
        <translation>&amp;Deshacer %1</translation>
    </message>
    <message>
        <source>&amp;Redo %1</source>
        <translation>&amp;Rehacer %1</translation>
    </message>
    <message>
        <source>Images (%1)</source>
        <translation>Imágenes (%1)</translation>
    </message>
    <message>
        <source>Opening %1…</source>
        <translation>Abriendo %1…</translation>
    </message>
    <message>
        <source>Saving %1…</source>
        <translation>Guardando %1…</translation>
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
        <translation>demasiado grande: %1 x %2 necesita %3, más de los %4 que este equipo permite para una imagen</translation>
    </message>
    <message>
        <source>empty file</source>
        <translation>archivo vacío</translation>
    </message>
    <message>
        <source>not enough memory to convert the %1 x %2 picture to 8 bits a channel</source>
        <translation>no hay memoria suficiente para convertir la imagen de %1 x %2 a 8 bits por canal</translation>
    </message>
    <message>
        <source>damaged file: it ends before the data it declares</source>
        <translation>archivo dañado: termina antes de los datos que declara</translation>
    </message>
</context>
<context>
    <name>VexaImageSave</name>
    <message>
        <source>Cannot write %1: the name has no suffix of an image format written here (such as .png).</source>
        <translation>No se puede escribir %1: el nombre no termina en la extensión de un formato de imagen que se escriba aquí (como .png).</translation>
    </message>
    <message>
        <source>Cannot write %1: %2</source>
        <translation>No se puede escribir %1: %2</translation>
    </message>
    <message>
        <source>the disk is full or the file too large for it</source>
        <translation>el disco está lleno o el archivo es demasiado grande para él</translation>
    </message>
</context>
<context>
    <name>VexaMattingWindow</name>
    <message>
        <source>Matting View</source>
        <translation>Vista de recorte</translation>
    </message>
    <message>
        <source>This build of the plug-in has no matting view.</source>
        <translation>Esta versión del complemento no tiene vista de recorte.</translation>
    </message>
    <message>
        <source>Matting</source>
        <translation>Recorte</translation>
    </message>
    <message>
        <source>Marks:</source>
        <translation>Marcas:</translation>
    </message>
    <message>
        <source>Left object, right unknown, middle erases</source>
        <translation type="vanished">Izquierdo: objeto, derecho: desconocido, central: borrar</translation>
    </message>
    <message>
        <source>Left background, right object, middle unknown</source>
        <translation>Izquierdo: fondo, derecho: objeto, central: desconocido</translation>
    </message>
    <message>
        <source>Left unknown, right object, middle erases</source>
        <translation>Izquierdo: desconocido, derecho: objeto, central: borrar</translation>
    </message>
    <message>
        <source>What the mouse buttons paint</source>
        <translation>Lo que pintan los botones del ratón</translation>
    </message>
    <message>
        <source> Brush:</source>
        <translation> Pincel:</translation>
    </message>
    <message>
        <source> px</source>
        <translation> px</translation>
    </message>
    <message>
        <source>Half-width of a stroke; also the number of smoothing passes of Matte</source>
        <translation type="vanished">Mitad del ancho del trazo; también el número de pasadas de suavizado de «Recorte»</translation>
    </message>
    <message>
        <source>Auto Flood</source>
        <translation>Relleno automático</translation>
    </message>
    <message>
        <source>Flood 16 pixels after each object stroke</source>
        <translation>Rellenar 16 píxeles tras cada trazo de objeto</translation>
    </message>
    <message>
        <source>Flood</source>
        <translation>Rellenar</translation>
    </message>
    <message>
        <source>Grow the object and background marks up to the unknown band</source>
        <translation>Extender las marcas de objeto y de fondo hasta la franja desconocida</translation>
    </message>
    <message>
        <source>Matte</source>
        <translation>Recorte</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Restablecer</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>Imagen</translation>
    </message>
    <message>
        <source>Composite</source>
        <translation>Composición</translation>
    </message>
    <message>
        <source>Use as selection</source>
        <translation>Usar como selección</translation>
    </message>
    <message>
        <source>The matte is now the selection.</source>
        <translation>El recorte es ahora la selección.</translation>
    </message>
    <message>
        <source>Paint an unknown band along the edge, object and background inside and outside it, then Flood and Matte.</source>
        <translation type="vanished">Pinte una franja desconocida a lo largo del borde, el objeto dentro y el fondo fuera de ella, y después use «Rellenar» y «Recorte».</translation>
    </message>
    <message>
        <source>The document this matte was made for is closed.</source>
        <translation>El documento para el que se hizo este recorte está cerrado.</translation>
    </message>
    <message>
        <source>The document has changed size since the matting view opened.</source>
        <translation>El tamaño del documento ha cambiado desde que se abrió la vista de recorte.</translation>
    </message>
    <message>
        <source>There is no matte yet.</source>
        <translation>Todavía no hay ningún recorte.</translation>
    </message>
    <message>
        <source>Left object, Shift + left background, right unknown, middle erases</source>
        <translation>Izquierdo: objeto, Mayús + izquierdo: fondo, derecho: desconocido, central: borra</translation>
    </message>
    <message>
        <source>Half-width of a stroke; also the number of smoothing passes of Compute Matte</source>
        <translation>Mitad del ancho del trazo; también el número de pasadas de suavizado de «Calcular recorte»</translation>
    </message>
    <message>
        <source>Compute Matte</source>
        <translation>Calcular recorte</translation>
    </message>
    <message>
        <source>Turn the marks into a trimap and refine its unknown band into the matte</source>
        <translation>Convierte las marcas en un trimapa y refina su banda desconocida hasta obtener el recorte</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Deshacer</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Rehacer</translation>
    </message>
    <message>
        <source>Show:</source>
        <translation>Mostrar:</translation>
    </message>
    <message>
        <source>Paint an unknown band along the edge with the right button, the object inside it with the left and the background outside it with Shift + left, then Flood and Compute Matte.</source>
        <translation>Pinte con el botón derecho una banda desconocida a lo largo del borde, con el izquierdo el objeto dentro de ella y con Mayús + izquierdo el fondo fuera; luego «Rellenar» y «Calcular recorte».</translation>
    </message>
    <message>
        <source>Wheel: zoom about the pointer; Space + drag: move; Ctrl+0: fit; Ctrl+1: 100 %</source>
        <translation>Rueda: zoom en torno al puntero; Espacio + arrastrar: mover; Ctrl+0: ajustar; Ctrl+1: 100 %</translation>
    </message>
    <message>
        <source>Fit to Window</source>
        <translation>Ajustar a la ventana</translation>
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
<context>
    <name>main</name>
    <message>
        <source>needs OpenGL 2.1 or later, and no usable OpenGL context could be created on this display (%1)</source>
        <translation>necesita OpenGL 2.1 o posterior, y no se pudo crear ningún contexto OpenGL utilizable en esta pantalla (%1)</translation>
    </message>
</context>
</TS>
