<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>QuickSelectGLWidget</name>
    <message>
        <source>Failed to compile: &apos;TrimapShader.fp&apos;
</source>
        <translation>编译失败：&apos;TrimapShader.fp&apos;
</translation>
    </message>
    <message>
        <source>Failed to compile: &apos;ExpandShader.fp&apos;
</source>
        <translation>编译失败：&apos;ExpandShader.fp&apos;
</translation>
    </message>
    <message>
        <source>Failed to compile: &apos;FastFillShader.fp&apos;
</source>
        <translation>编译失败：&apos;FastFillShader.fp&apos;
</translation>
    </message>
    <message>
        <source>Failed to compile: &apos;RobustShader.fp&apos;
</source>
        <translation>编译失败：&apos;RobustShader.fp&apos;
</translation>
    </message>
    <message>
        <source>Failed to compile: &apos;closedShader.fp&apos;
</source>
        <translation>编译失败：&apos;closedShader.fp&apos;
</translation>
    </message>
    <message>
        <source>Failed to compile: &apos;resultShader.fp&apos;
</source>
        <translation>编译失败：&apos;resultShader.fp&apos;
</translation>
    </message>
    <message>
        <source>Failed to link &apos;TrimapShader&apos;
</source>
        <translation>链接失败：&apos;TrimapShader&apos;
</translation>
    </message>
    <message>
        <source>Failed to link &apos;ExpandShader&apos;
</source>
        <translation>链接失败：&apos;ExpandShader&apos;
</translation>
    </message>
    <message>
        <source>Failed to link &apos;FastFillShader&apos;
</source>
        <translation>链接失败：&apos;FastFillShader&apos;
</translation>
    </message>
    <message>
        <source>Failed to link &apos;RobustShader&apos;
</source>
        <translation>链接失败：&apos;RobustShader&apos;
</translation>
    </message>
    <message>
        <source>Failed to link &apos;closedShader&apos;
</source>
        <translation>链接失败：&apos;closedShader&apos;
</translation>
    </message>
    <message>
        <source>Failed to link &apos;resultShader&apos;
</source>
        <translation>链接失败：&apos;resultShader&apos;
</translation>
    </message>
    <message>
        <source>Failed to open file:
&apos;%1&apos;.</source>
        <translation>无法打开文件：
&apos;%1&apos;。</translation>
    </message>
    <message>
        <source>The matting view needs OpenGL 2.1; this driver offers only %1 %2.%3.</source>
        <translation>抠图视图需要 OpenGL 2.1；此驱动程序只提供 %1 %2.%3。</translation>
    </message>
    <message>
        <source>The image is %1 x %2 pixels, larger than this OpenGL&apos;s largest texture (%3 pixels a side).</source>
        <translation>图像为 %1 x %2 像素，大于此 OpenGL 的最大纹理（每边 %3 像素）。</translation>
    </message>
    <message>
        <source>This OpenGL cannot render into a %1 x %2 texture.</source>
        <translation>此 OpenGL 无法绘制到 %1 x %2 的纹理中。</translation>
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
        <translation>正在标记..</translation>
    </message>
    <message>
        <source>Mark done</source>
        <translation>标记完成</translation>
    </message>
    <message>
        <source>Please mark foreground objects.</source>
        <translation>请标记前景对象。</translation>
    </message>
    <message>
        <source>Please mark background regions.</source>
        <translation>请标记背景区域。</translation>
    </message>
    <message>
        <source>Alpha Extracting ..</source>
        <translation>正在提取 Alpha ..</translation>
    </message>
    <message>
        <source>Alpha Extract done ..</source>
        <translation>Alpha 提取完成 ..</translation>
    </message>
    <message>
        <source>Refining Edges ..</source>
        <translation>正在调整边缘 ..</translation>
    </message>
</context>
<context>
    <name>VexaToolLassoPolygon</name>
    <message>
        <source>Alt+Z to delete/recover latest point, double click to close the path</source>
        <translation>Alt+Z 删除/恢复最后一个点，双击闭合路径</translation>
    </message>
</context>
<context>
    <name>VexaToolLassoPolygonWidgetClass</name>
    <message>
        <source>Polygon Lasso Window</source>
        <translation>多边形套索</translation>
    </message>
    <message>
        <source>Control Points:</source>
        <translation>控制点:</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>撤销</translation>
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
        <translation>阈值:</translation>
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
        <translation>快速选择</translation>
    </message>
    <message>
        <source>Applying...</source>
        <translation>正在应用...</translation>
    </message>
</context>
<context>
    <name>VexaToolQuickSelectWidget</name>
    <message>
        <source>Quick Select Tool</source>
        <translation>快速选择工具</translation>
    </message>
    <message>
        <source>Step1:Mark Fore/Background</source>
        <translation>步骤 1：标记前景/背景</translation>
    </message>
    <message>
        <source>Mark Foreground</source>
        <translation>标记前景</translation>
    </message>
    <message>
        <source>Mark Background</source>
        <translation>标记背景</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>预览</translation>
    </message>
    <message>
        <source>Step2:Modify Boundary</source>
        <translation>步骤 2：修改边界</translation>
    </message>
    <message>
        <source>Mark Boundary</source>
        <translation>标记边界</translation>
    </message>
    <message>
        <source>Clear Marks</source>
        <translation type="vanished">清除标记</translation>
    </message>
    <message>
        <source>Alpha Extract</source>
        <translation>提取 Alpha</translation>
    </message>
    <message>
        <source>Pen settings</source>
        <translation>画笔设置</translation>
    </message>
    <message>
        <source>Mark Radius: </source>
        <translation>标记半径: </translation>
    </message>
    <message>
        <source>Sensitivity: </source>
        <translation>灵敏度: </translation>
    </message>
    <message>
        <source>View Settings</source>
        <translation>视图设置</translation>
    </message>
    <message>
        <source>Show User Marks</source>
        <translation>显示用户标记</translation>
    </message>
    <message>
        <source>View Image</source>
        <translation>查看图像</translation>
    </message>
    <message>
        <source>View Matte</source>
        <translation>查看抠图</translation>
    </message>
    <message>
        <source>View Alpha</source>
        <translation>查看 Alpha</translation>
    </message>
    <message>
        <source>View Nodes</source>
        <translation>查看节点</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>重置</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
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
        <translation>保存图像</translation>
    </message>
    <message>
        <source>Image Files (*.bmp *.gif *.jpg *.jpeg *.png)</source>
        <translation>图像文件 (*.bmp *.gif *.jpg *.jpeg *.png)</translation>
    </message>
    <message>
        <source>The document could not be rendered: there is nothing to select from.</source>
        <translation>无法渲染文档：没有可供选择的内容。</translation>
    </message>
    <message>
        <source>Refine Edges</source>
        <translation>调整边缘</translation>
    </message>
    <message>
        <source>Paint foreground marks (F)</source>
        <translation>绘制前景标记 (F)</translation>
    </message>
    <message>
        <source>Paint background marks (B)</source>
        <translation>绘制背景标记 (B)</translation>
    </message>
    <message>
        <source>Paint the boundary band by hand (M)</source>
        <translation>手动绘制边界带 (M)</translation>
    </message>
    <message>
        <source>Erase the marks you paint over (E)</source>
        <translation>擦除涂过的标记 (E)</translation>
    </message>
    <message>
        <source>Cut the object out along the marks (P)</source>
        <translation>按标记抠出对象 (P)</translation>
    </message>
    <message>
        <source>Turn the boundary band into soft edges (A)</source>
        <translation>将边界带转为柔和边缘 (A)</translation>
    </message>
    <message>
        <source>Erase Marks</source>
        <translation>擦除标记</translation>
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
        <translation>宽:</translation>
    </message>
    <message>
        <source>H:</source>
        <translation>高:</translation>
    </message>
    <message>
        <source>Ok</source>
        <translation>确定</translation>
    </message>
</context>
<context>
    <name>VexaToolSelectionColorRangeWidgetClass</name>
    <message>
        <source>Color Range</source>
        <translation>色彩范围</translation>
    </message>
    <message>
        <source>Select Color</source>
        <translation>选择颜色</translation>
    </message>
    <message>
        <source>From:</source>
        <translation>来源:</translation>
    </message>
    <message>
        <source>Color Picker</source>
        <translation>吸管</translation>
    </message>
    <message>
        <source>Mode:</source>
        <translation>模式:</translation>
    </message>
    <message>
        <source>Tolerance:</source>
        <translation>容差:</translation>
    </message>
    <message>
        <source>Quick View:</source>
        <translation>快速预览:</translation>
    </message>
    <message>
        <source>Selection</source>
        <translation>选择范围</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>图像</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
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
        <translation>在任何模式下，用鼠标右键拖动即可从选区减去</translation>
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
        <translation>新选区</translation>
    </message>
    <message>
        <source>selection</source>
        <translatorcomment>notr: style-sheet hook (dynamic property class) of the mode buttons</translatorcomment>
        <translation>selection</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>添加到选区</translation>
    </message>
    <message>
        <source>Substract</source>
        <translation>从选区减去</translation>
    </message>
    <message>
        <source>Intersect</source>
        <translation>与选区交叉</translation>
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
