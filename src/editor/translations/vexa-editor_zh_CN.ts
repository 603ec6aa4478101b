<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>VexaActionManager</name>
    <message>
        <source>Delete</source>
        <translation>删除</translation>
    </message>
</context>
<context>
    <name>VexaContext</name>
    <message>
        <source>The image is empty: a document needs at least one pixel.</source>
        <translation>图像为空：文档至少需要一个像素。</translation>
    </message>
    <message>
        <source>Background</source>
        <translation>背景</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>The image is too large: a document holds at most about two billion pixels.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>VexaEditorWindow</name>
    <message>
        <source>%1, %2  (%3 %)</source>
        <translation type="vanished">%1, %2  (%3%)</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>文件(&amp;F)</translation>
    </message>
    <message>
        <source>&amp;Open...</source>
        <translation>打开(&amp;O)...</translation>
    </message>
    <message>
        <source>Save &amp;Image As...</source>
        <translation>图像另存为(&amp;I)...</translation>
    </message>
    <message>
        <source>&amp;Export Selection Mask...</source>
        <translation>导出选区蒙版(&amp;E)...</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>退出(&amp;Q)</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>编辑(&amp;E)</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>撤销(&amp;U)</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>重做(&amp;R)</translation>
    </message>
    <message>
        <source>Undo Tool Step</source>
        <translation>撤销工具步骤</translation>
    </message>
    <message>
        <source>Alt+Z</source>
        <translatorcomment>notr: key sequence, parsed by QKeySequence in its portable form</translatorcomment>
        <translation>Alt+Z</translation>
    </message>
    <message>
        <source>Redo Tool Step</source>
        <translation>重做工具步骤</translation>
    </message>
    <message>
        <source>Alt+Shift+Z</source>
        <translatorcomment>notr: key sequence, parsed by QKeySequence in its portable form</translatorcomment>
        <translation>Alt+Shift+Z</translation>
    </message>
    <message>
        <source>&amp;Select</source>
        <translation>选择(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;All</source>
        <translation>全部(&amp;A)</translation>
    </message>
    <message>
        <source>&amp;None</source>
        <translation>取消选择(&amp;N)</translation>
    </message>
    <message>
        <source>Ctrl+D</source>
        <translatorcomment>notr: key sequence, parsed by QKeySequence in its portable form</translatorcomment>
        <translation>Ctrl+D</translation>
    </message>
    <message>
        <source>&amp;Invert</source>
        <translation>反选(&amp;I)</translation>
    </message>
    <message>
        <source>Ctrl+Shift+I</source>
        <translatorcomment>notr: key sequence, parsed by QKeySequence in its portable form</translatorcomment>
        <translation>Ctrl+Shift+I</translation>
    </message>
    <message>
        <source>Tools</source>
        <translation>工具</translation>
    </message>
    <message>
        <source>%1 is not available in this build of the plug-in</source>
        <translation>此版本的插件不提供 %1</translation>
    </message>
    <message>
        <source>Foreground colour</source>
        <translation>前景色</translation>
    </message>
    <message>
        <source>Tool options</source>
        <translation>工具选项</translation>
    </message>
    <message>
        <source>Cannot open %1: %2</source>
        <translation>无法打开 %1：%2</translation>
    </message>
    <message>
        <source>There is no document to save.</source>
        <translation>没有可保存的文档。</translation>
    </message>
    <message>
        <source>Cannot write %1.</source>
        <translation>无法写入 %1。</translation>
    </message>
    <message>
        <source>There is no document.</source>
        <translation>没有文档。</translation>
    </message>
    <message>
        <source>No document</source>
        <translation>无文档</translation>
    </message>
    <message>
        <source>%1 - Vexa Selections</source>
        <translation>%1 - Vexa Selections</translation>
    </message>
    <message>
        <source>Open Image</source>
        <translation>打开图像</translation>
    </message>
    <message>
        <source>Images (*.png *.jpg *.jpeg *.bmp *.gif *.tif *.tiff *.webp)</source>
        <translation>图像 (*.png *.jpg *.jpeg *.bmp *.gif *.tif *.tiff *.webp)</translation>
    </message>
    <message>
        <source>Save Image</source>
        <translation>保存图像</translation>
    </message>
    <message>
        <source>PNG image (*.png)</source>
        <translation>PNG 图像 (*.png)</translation>
    </message>
    <message>
        <source>Export Selection Mask</source>
        <translation>导出选区蒙版</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Matting View…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Zoom &amp;In</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Zoom &amp;Out</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Fit to Window</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ctrl+0</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;100 %</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ctrl+1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>VexaImageFile</name>
    <message>
        <source>%1 GB</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 MB</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>too large: %1 x %2 needs %3, more than the %4 this machine allows for one image</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>VexaMattingWindow</name>
    <message>
        <source>Matting View</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This build of the plug-in has no matting view.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Matting</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Marks:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Left object, right unknown, middle erases</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Left background, right object, middle unknown</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Left unknown, right object, middle erases</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>What the mouse buttons paint</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source> Brush:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source> px</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Half-width of a stroke; also the number of smoothing passes of Matte</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Auto Flood</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Flood 16 pixels after each object stroke</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Flood</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Grow the object and background marks up to the unknown band</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Matte</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reset</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Composite</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Use as selection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The matte is now the selection.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Paint an unknown band along the edge, object and background inside and outside it, then Flood and Matte.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The document this matte was made for is closed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The document has changed size since the matting view opened.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no matte yet.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>VexaPluginLoader</name>
    <message>
        <source>The plug-in file %1 does not exist.</source>
        <translation>插件文件 %1 不存在。</translation>
    </message>
    <message>
        <source>The plug-in %1 cannot be loaded: %2</source>
        <translation>无法加载插件 %1：%2</translation>
    </message>
    <message>
        <source>%1 is not a tools plug-in: it lacks %2.</source>
        <translation>%1 不是工具插件：缺少 %2。</translation>
    </message>
</context>
<context>
    <name>VexaSelection</name>
    <message>
        <source>Selection</source>
        <translation>选区</translation>
    </message>
    <message>
        <source>Deselect</source>
        <translation>取消选择</translation>
    </message>
    <message>
        <source>Invert Selection</source>
        <translation>反选</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>全选</translation>
    </message>
    <message>
        <source>Move Selection</source>
        <translation>移动选区</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>needs OpenGL 2.1 or later, and no usable OpenGL context could be created on this display (%1)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
