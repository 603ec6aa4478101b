<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_TW">
<context>
    <name>QuickSelectGLWidget</name>
    <message>
        <source>Failed to compile: &apos;TrimapShader.fp&apos;
</source>
        <translation>編譯失敗：&apos;TrimapShader.fp&apos;
</translation>
    </message>
    <message>
        <source>Failed to compile: &apos;ExpandShader.fp&apos;
</source>
        <translation>編譯失敗：&apos;ExpandShader.fp&apos;
</translation>
    </message>
    <message>
        <source>Failed to compile: &apos;FastFillShader.fp&apos;
</source>
        <translation>編譯失敗：&apos;FastFillShader.fp&apos;
</translation>
    </message>
    <message>
        <source>Failed to compile: &apos;RobustShader.fp&apos;
</source>
        <translation>編譯失敗：&apos;RobustShader.fp&apos;
</translation>
    </message>
    <message>
        <source>Failed to compile: &apos;closedShader.fp&apos;
</source>
        <translation>編譯失敗：&apos;closedShader.fp&apos;
</translation>
    </message>
    <message>
        <source>Failed to compile: &apos;resultShader.fp&apos;
</source>
        <translation>編譯失敗：&apos;resultShader.fp&apos;
</translation>
    </message>
    <message>
        <source>Failed to link &apos;TrimapShader&apos;
</source>
        <translation>連結失敗：&apos;TrimapShader&apos;
</translation>
    </message>
    <message>
        <source>Failed to link &apos;ExpandShader&apos;
</source>
        <translation>連結失敗：&apos;ExpandShader&apos;
</translation>
    </message>
    <message>
        <source>Failed to link &apos;FastFillShader&apos;
</source>
        <translation>連結失敗：&apos;FastFillShader&apos;
</translation>
    </message>
    <message>
        <source>Failed to link &apos;RobustShader&apos;
</source>
        <translation>連結失敗：&apos;RobustShader&apos;
</translation>
    </message>
    <message>
        <source>Failed to link &apos;closedShader&apos;
</source>
        <translation>連結失敗：&apos;closedShader&apos;
</translation>
    </message>
    <message>
        <source>Failed to link &apos;resultShader&apos;
</source>
        <translation>連結失敗：&apos;resultShader&apos;
</translation>
    </message>
    <message>
        <source>Failed to open file:
&apos;%1&apos;.</source>
        <translation>無法開啟檔案：
&apos;%1&apos;。</translation>
    </message>
    <message>
        <source>The matting view needs OpenGL 2.1; this driver offers only %1 %2.%3.</source>
        <translation>去背檢視需要 OpenGL 2.1；此驅動程式只提供 %1 %2.%3。</translation>
    </message>
    <message>
        <source>The image is %1 x %2 pixels, larger than this OpenGL&apos;s largest texture (%3 pixels a side).</source>
        <translation>影像為 %1 x %2 像素，大於此 OpenGL 的最大材質（每邊 %3 像素）。</translation>
    </message>
    <message>
        <source>This OpenGL cannot render into a %1 x %2 texture.</source>
        <translation>此 OpenGL 無法繪製到 %1 x %2 的材質中。</translation>
    </message>
</context>
<context>
    <name>Thread</name>
    <message>
        <source>Initializing ..</source>
        <translation>正在初始化 ..</translation>
    </message>
    <message>
        <source>Initialize done.</source>
        <translation>初始化完成。</translation>
    </message>
    <message>
        <source>Marking..</source>
        <translation>正在標記..</translation>
    </message>
    <message>
        <source>Mark done</source>
        <translation>標記完成</translation>
    </message>
    <message>
        <source>Please mark foreground objects.</source>
        <translation>請標記前景物件。</translation>
    </message>
    <message>
        <source>Please mark background regions.</source>
        <translation>請標記背景區域。</translation>
    </message>
    <message>
        <source>Alpha Extracting ..</source>
        <translation>正在擷取 Alpha ..</translation>
    </message>
    <message>
        <source>Alpha Extract done ..</source>
        <translation>Alpha 擷取完成 ..</translation>
    </message>
    <message>
        <source>Refining Edges ..</source>
        <translation>正在調整邊緣 ..</translation>
    </message>
</context>
<context>
    <name>VexaToolLassoPolygon</name>
    <message>
        <source>Alt+Z to delete/recover latest point, double click to close the path</source>
        <translation>Alt+Z 刪除/復原最後一個點，按兩下以封閉路徑</translation>
    </message>
</context>
<context>
    <name>VexaToolLassoPolygonWidgetClass</name>
    <message>
        <source>Polygon Lasso Window</source>
        <translation>多邊形套索</translation>
    </message>
    <message>
        <source>Control Points:</source>
        <translation>控制點:</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>復原</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>重做</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>清除</translation>
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
        <translation>臨界值:</translation>
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
        <translation>快速選取</translation>
    </message>
    <message>
        <source>Applying...</source>
        <translation>正在套用...</translation>
    </message>
</context>
<context>
    <name>VexaToolQuickSelectWidget</name>
    <message>
        <source>Quick Select Tool</source>
        <translation>快速選取工具</translation>
    </message>
    <message>
        <source>Step1:Mark Fore/Background</source>
        <translation>步驟 1：標記前景/背景</translation>
    </message>
    <message>
        <source>Mark Foreground</source>
        <translation>標記前景</translation>
    </message>
    <message>
        <source>Mark Background</source>
        <translation>標記背景</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>預覽</translation>
    </message>
    <message>
        <source>Step2:Modify Boundary</source>
        <translation>步驟 2：修改邊界</translation>
    </message>
    <message>
        <source>Mark Boundary</source>
        <translation>標記邊界</translation>
    </message>
    <message>
        <source>Clear Marks</source>
        <translation type="vanished">清除標記</translation>
    </message>
    <message>
        <source>Alpha Extract</source>
        <translation>擷取 Alpha</translation>
    </message>
    <message>
        <source>Pen settings</source>
        <translation>筆刷設定</translation>
    </message>
    <message>
        <source>Mark Radius: </source>
        <translation>標記半徑: </translation>
    </message>
    <message>
        <source>Sensitivity: </source>
        <translation>靈敏度: </translation>
    </message>
    <message>
        <source>View Settings</source>
        <translation>檢視設定</translation>
    </message>
    <message>
        <source>Show User Marks</source>
        <translation>顯示使用者標記</translation>
    </message>
    <message>
        <source>View Image</source>
        <translation>檢視影像</translation>
    </message>
    <message>
        <source>View Matte</source>
        <translation>檢視去背</translation>
    </message>
    <message>
        <source>View Alpha</source>
        <translation>檢視 Alpha</translation>
    </message>
    <message>
        <source>View Nodes</source>
        <translation>檢視節點</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>重設</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>確定</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Initializing...</source>
        <translation>正在初始化...</translation>
    </message>
    <message>
        <source>Save Image</source>
        <translation>儲存影像</translation>
    </message>
    <message>
        <source>Image Files (*.bmp *.gif *.jpg *.jpeg *.png)</source>
        <translation>影像檔案 (*.bmp *.gif *.jpg *.jpeg *.png)</translation>
    </message>
    <message>
        <source>The document could not be rendered: there is nothing to select from.</source>
        <translation>無法算繪文件：沒有可供選取的內容。</translation>
    </message>
    <message>
        <source>Refine Edges</source>
        <translation>調整邊緣</translation>
    </message>
    <message>
        <source>Paint foreground marks (F)</source>
        <translation>繪製前景標記 (F)</translation>
    </message>
    <message>
        <source>Paint background marks (B)</source>
        <translation>繪製背景標記 (B)</translation>
    </message>
    <message>
        <source>Paint the boundary band by hand (M)</source>
        <translation>手動繪製邊界帶 (M)</translation>
    </message>
    <message>
        <source>Erase the marks you paint over (E)</source>
        <translation>擦除塗過的標記 (E)</translation>
    </message>
    <message>
        <source>Cut the object out along the marks (P)</source>
        <translation>依標記摳出物件 (P)</translation>
    </message>
    <message>
        <source>Turn the boundary band into soft edges (A)</source>
        <translation>將邊界帶轉為柔和邊緣 (A)</translation>
    </message>
    <message>
        <source>Erase Marks</source>
        <translation>擦除標記</translation>
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
        <translation>寬:</translation>
    </message>
    <message>
        <source>H:</source>
        <translation>高:</translation>
    </message>
    <message>
        <source>Ok</source>
        <translation>確定</translation>
    </message>
</context>
<context>
    <name>VexaToolSelectionColorRangeWidgetClass</name>
    <message>
        <source>Color Range</source>
        <translation>顏色範圍</translation>
    </message>
    <message>
        <source>Select Color</source>
        <translation>選取顏色</translation>
    </message>
    <message>
        <source>From:</source>
        <translation>來源:</translation>
    </message>
    <message>
        <source>Color Picker</source>
        <translation>滴管</translation>
    </message>
    <message>
        <source>Mode:</source>
        <translation>模式:</translation>
    </message>
    <message>
        <source>Tolerance:</source>
        <translation>容許度:</translation>
    </message>
    <message>
        <source>Quick View:</source>
        <translation>快速預覽:</translation>
    </message>
    <message>
        <source>Selection</source>
        <translation>選取範圍</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>影像</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>確定</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
</context>
<context>
    <name>VexaToolSelectionWidget</name>
    <message>
        <source>Drag with the right mouse button to subtract in any mode</source>
        <translation>在任何模式下，以滑鼠右鍵拖曳即可從選取範圍中減去</translation>
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
        <translation>新增選取範圍</translation>
    </message>
    <message>
        <source>selection</source>
        <translatorcomment>notr: style-sheet hook (dynamic property class) of the mode buttons</translatorcomment>
        <translation>selection</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>增加至選取範圍</translation>
    </message>
    <message>
        <source>Substract</source>
        <translation>從選取範圍中減去</translation>
    </message>
    <message>
        <source>Intersect</source>
        <translation>與選取範圍相交</translation>
    </message>
    <message>
        <source>Feather:</source>
        <translation>羽化:</translation>
    </message>
    <message>
        <source>px</source>
        <translation>像素</translation>
    </message>
</context>
</TS>
