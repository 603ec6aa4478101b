<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es_ES">
<context>
    <name>QuickSelectGLWidget</name>
    <message>
        <source>Failed to compile: &apos;TrimapShader.fp&apos;
</source>
        <translation>Error al compilar: &apos;TrimapShader.fp&apos;
</translation>
    </message>
    <message>
        <source>Failed to compile: &apos;ExpandShader.fp&apos;
</source>
        <translation>Error al compilar: &apos;ExpandShader.fp&apos;
</translation>
    </message>
    <message>
        <source>Failed to compile: &apos;FastFillShader.fp&apos;
</source>
        <translation>Error al compilar: &apos;FastFillShader.fp&apos;
</translation>
    </message>
    <message>
        <source>Failed to compile: &apos;RobustShader.fp&apos;
</source>
        <translation>Error al compilar: &apos;RobustShader.fp&apos;
</translation>
    </message>
    <message>
        <source>Failed to compile: &apos;closedShader.fp&apos;
</source>
        <translation>Error al compilar: &apos;closedShader.fp&apos;
</translation>
    </message>
    <message>
        <source>Failed to compile: &apos;resultShader.fp&apos;
</source>
        <translation>Error al compilar: &apos;resultShader.fp&apos;
</translation>
    </message>
    <message>
        <source>Failed to link &apos;TrimapShader&apos;
</source>
        <translation>Error al enlazar &apos;TrimapShader&apos;
</translation>
    </message>
    <message>
        <source>Failed to link &apos;ExpandShader&apos;
</source>
        <translation>Error al enlazar &apos;ExpandShader&apos;
</translation>
    </message>
    <message>
        <source>Failed to link &apos;FastFillShader&apos;
</source>
        <translation>Error al enlazar &apos;FastFillShader&apos;
</translation>
    </message>
    <message>
        <source>Failed to link &apos;RobustShader&apos;
</source>
        <translation>Error al enlazar &apos;RobustShader&apos;
</translation>
    </message>
    <message>
        <source>Failed to link &apos;closedShader&apos;
</source>
        <translation>Error al enlazar &apos;closedShader&apos;
</translation>
    </message>
    <message>
        <source>Failed to link &apos;resultShader&apos;
</source>
        <translation>Error al enlazar &apos;resultShader&apos;
</translation>
    </message>
    <message>
        <source>Failed to open file:
&apos;%1&apos;.</source>
        <translation>No se pudo abrir el archivo:
&apos;%1&apos;.</translation>
    </message>
    <message>
        <source>The matting view needs OpenGL 2.1; this driver offers only %1 %2.%3.</source>
        <translation>La vista de matting necesita OpenGL 2.1; este controlador solo ofrece %1 %2.%3.</translation>
    </message>
    <message>
        <source>The image is %1 x %2 pixels, larger than this OpenGL&apos;s largest texture (%3 pixels a side).</source>
        <translation>La imagen mide %1 x %2 píxeles, más que la textura más grande de este OpenGL (%3 píxeles por lado).</translation>
    </message>
    <message>
        <source>This OpenGL cannot render into a %1 x %2 texture.</source>
        <translation>Este OpenGL no puede dibujar en una textura de %1 x %2.</translation>
    </message>
</context>
<context>
    <name>Thread</name>
    <message>
        <source>Initializing ..</source>
        <translation>Inicializando ..</translation>
    </message>
    <message>
        <source>Initialize done.</source>
        <translation>Inicialización terminada.</translation>
    </message>
    <message>
        <source>Marking..</source>
        <translation>Marcando..</translation>
    </message>
    <message>
        <source>Mark done</source>
        <translation>Marcado terminado</translation>
    </message>
    <message>
        <source>Please mark foreground objects.</source>
        <translation>Marque los objetos del primer plano.</translation>
    </message>
    <message>
        <source>Please mark background regions.</source>
        <translation>Marque las zonas del fondo.</translation>
    </message>
    <message>
        <source>Alpha Extracting ..</source>
        <translation>Extrayendo alfa ..</translation>
    </message>
    <message>
        <source>Alpha Extract done ..</source>
        <translation>Extracción alfa terminada ..</translation>
    </message>
    <message>
        <source>Refining Edges ..</source>
        <translation>Refinando bordes ..</translation>
    </message>
</context>
<context>
    <name>VexaToolLassoPolygon</name>
    <message>
        <source>Alt+Z to delete/recover latest point, double click to close the path</source>
        <translation>Alt+Z elimina o recupera el último punto; doble clic para cerrar el trazado</translation>
    </message>
</context>
<context>
    <name>VexaToolLassoPolygonWidgetClass</name>
    <message>
        <source>Polygon Lasso Window</source>
        <translation>Lazo poligonal</translation>
    </message>
    <message>
        <source>Control Points:</source>
        <translation>Puntos de control:</translation>
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
        <source>Clear</source>
        <translation>Borrar</translation>
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
        <translation>Umbral:</translation>
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
        <translation>Selección rápida</translation>
    </message>
    <message>
        <source>Applying...</source>
        <translation>Aplicando...</translation>
    </message>
</context>
<context>
    <name>VexaToolQuickSelectWidget</name>
    <message>
        <source>Quick Select Tool</source>
        <translation>Herramienta Selección rápida</translation>
    </message>
    <message>
        <source>Step1:Mark Fore/Background</source>
        <translation>Paso 1: Marcar primer plano/fondo</translation>
    </message>
    <message>
        <source>Mark Foreground</source>
        <translation>Marcar primer plano</translation>
    </message>
    <message>
        <source>Mark Background</source>
        <translation>Marcar fondo</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>Previsualizar</translation>
    </message>
    <message>
        <source>Step2:Modify Boundary</source>
        <translation>Paso 2: Modificar borde</translation>
    </message>
    <message>
        <source>Mark Boundary</source>
        <translation>Marcar borde</translation>
    </message>
    <message>
        <source>Clear Marks</source>
        <translation type="vanished">Borrar marcas</translation>
    </message>
    <message>
        <source>Alpha Extract</source>
        <translation>Extraer alfa</translation>
    </message>
    <message>
        <source>Pen settings</source>
        <translation>Ajustes del pincel</translation>
    </message>
    <message>
        <source>Mark Radius: </source>
        <translation>Radio de marca: </translation>
    </message>
    <message>
        <source>Sensitivity: </source>
        <translation>Sensibilidad: </translation>
    </message>
    <message>
        <source>View Settings</source>
        <translation>Ajustes de vista</translation>
    </message>
    <message>
        <source>Show User Marks</source>
        <translation>Mostrar marcas</translation>
    </message>
    <message>
        <source>View Image</source>
        <translation>Ver imagen</translation>
    </message>
    <message>
        <source>View Matte</source>
        <translation>Ver recorte</translation>
    </message>
    <message>
        <source>View Alpha</source>
        <translation>Ver alfa</translation>
    </message>
    <message>
        <source>View Nodes</source>
        <translation>Ver nodos</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Restablecer</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>Aceptar</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>Initializing...</source>
        <translation>Inicializando...</translation>
    </message>
    <message>
        <source>Save Image</source>
        <translation>Guardar imagen</translation>
    </message>
    <message>
        <source>Image Files (*.bmp *.gif *.jpg *.jpeg *.png)</source>
        <translation>Archivos de imagen (*.bmp *.gif *.jpg *.jpeg *.png)</translation>
    </message>
    <message>
        <source>The document could not be rendered: there is nothing to select from.</source>
        <translation>No se ha podido representar el documento: no hay nada de lo que seleccionar.</translation>
    </message>
    <message>
        <source>Refine Edges</source>
        <translation>Refinar bordes</translation>
    </message>
    <message>
        <source>Paint foreground marks (F)</source>
        <translation>Pintar marcas de primer plano (F)</translation>
    </message>
    <message>
        <source>Paint background marks (B)</source>
        <translation>Pintar marcas de fondo (B)</translation>
    </message>
    <message>
        <source>Paint the boundary band by hand (M)</source>
        <translation>Pintar a mano la banda del borde (M)</translation>
    </message>
    <message>
        <source>Erase the marks you paint over (E)</source>
        <translation>Borrar las marcas sobre las que pinta (E)</translation>
    </message>
    <message>
        <source>Cut the object out along the marks (P)</source>
        <translation>Recortar el objeto según las marcas (P)</translation>
    </message>
    <message>
        <source>Turn the boundary band into soft edges (A)</source>
        <translation>Convertir la banda del borde en bordes suaves (A)</translation>
    </message>
    <message>
        <source>Erase Marks</source>
        <translation>Borrador de marcas</translation>
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
        <translation>An:</translation>
    </message>
    <message>
        <source>H:</source>
        <translation>Al:</translation>
    </message>
    <message>
        <source>Ok</source>
        <translation>Aceptar</translation>
    </message>
</context>
<context>
    <name>VexaToolSelectionColorRangeWidgetClass</name>
    <message>
        <source>Color Range</source>
        <translation>Gama de colores</translation>
    </message>
    <message>
        <source>Select Color</source>
        <translation>Seleccionar color</translation>
    </message>
    <message>
        <source>From:</source>
        <translation>Origen:</translation>
    </message>
    <message>
        <source>Color Picker</source>
        <translation>Cuentagotas</translation>
    </message>
    <message>
        <source>Mode:</source>
        <translation>Modo:</translation>
    </message>
    <message>
        <source>Tolerance:</source>
        <translation>Tolerancia:</translation>
    </message>
    <message>
        <source>Quick View:</source>
        <translation>Vista rápida:</translation>
    </message>
    <message>
        <source>Selection</source>
        <translation>Selección</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>Imagen</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>Aceptar</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
</context>
<context>
    <name>VexaToolSelectionWidget</name>
    <message>
        <source>Drag with the right mouse button to subtract in any mode</source>
        <translation>Arrastre con el botón derecho del ratón para restar en cualquier modo</translation>
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
        <translation>Selección nueva</translation>
    </message>
    <message>
        <source>selection</source>
        <translatorcomment>notr: style-sheet hook (dynamic property class) of the mode buttons</translatorcomment>
        <translation>selection</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Añadir a la selección</translation>
    </message>
    <message>
        <source>Substract</source>
        <translation>Restar de la selección</translation>
    </message>
    <message>
        <source>Intersect</source>
        <translation>Intersecar con la selección</translation>
    </message>
    <message>
        <source>Feather:</source>
        <translation>Calado:</translation>
    </message>
    <message>
        <source>px</source>
        <translation>px</translation>
    </message>
</context>
</TS>
