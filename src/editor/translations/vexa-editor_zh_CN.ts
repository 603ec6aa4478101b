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
        <translation>图像过大：文档最多只能容纳约 20 亿像素。</translation>
    </message>
    <message>
        <source>Not enough memory for a %1 x %2 image (%3 MB).</source>
        <translation>内存不足，无法容纳 %1 x %2 的图像 (%3 MB)。</translation>
    </message>
</context>
<context>
    <name>VexaEditorWindow</name>
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
        <translation type="vanished">无法写入 %1。</translation>
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
        <translation type="vanished">图像 (*.png *.jpg *.jpeg *.bmp *.gif *.tif *.tiff *.webp)</translation>
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
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>Matting View…</source>
        <translation>抠图视图…</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>视图(&amp;V)</translation>
    </message>
    <message>
        <source>Zoom &amp;In</source>
        <translation>放大(&amp;I)</translation>
    </message>
    <message>
        <source>Zoom &amp;Out</source>
        <translation>缩小(&amp;O)</translation>
    </message>
    <message>
        <source>&amp;Fit to Window</source>
        <translation>适合窗口(&amp;F)</translation>
    </message>
    <message>
        <source>Ctrl+0</source>
        <translatorcomment>notr: key sequence, parsed by QKeySequence in its portable form</translatorcomment>
        <translation>Ctrl+0</translation>
    </message>
    <message>
        <source>&amp;100 %</source>
        <translation>100%(&amp;1)</translation>
    </message>
    <message>
        <source>Ctrl+1</source>
        <translatorcomment>notr: key sequence, parsed by QKeySequence in its portable form</translatorcomment>
        <translation>Ctrl+1</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1%</translation>
    </message>
    <message>
        <source>&amp;Undo %1</source>
        <translation>撤销 %1(&amp;U)</translation>
    </message>
    <message>
        <source>&amp;Redo %1</source>
        <translation>重做 %1(&amp;R)</translation>
    </message>
    <message>
        <source>Images (%1)</source>
        <translation>图像 (%1)</translation>
    </message>
    <message>
        <source>Opening %1…</source>
        <translation>正在打开 %1…</translation>
    </message>
    <message>
        <source>Saving %1…</source>
        <translation>正在保存 %1…</translation>
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
        <translation>过大：%1 x %2 需要 %3，超过了本机为单个图像允许的 %4</translation>
    </message>
    <message>
        <source>empty file</source>
        <translation>空文件</translation>
    </message>
    <message>
        <source>not enough memory to convert the %1 x %2 picture to 8 bits a channel</source>
        <translation>内存不足，无法将 %1 x %2 的图片转换为每通道 8 位</translation>
    </message>
    <message>
        <source>damaged file: it ends before the data it declares</source>
        <translation>文件已损坏：文件在其声明的数据之前就结束了</translation>
    </message>
</context>
<context>
    <name>VexaImageSave</name>
    <message>
        <source>Cannot write %1: the name has no suffix of an image format written here (such as .png).</source>
        <translation>无法写入 %1：文件名不是以此处可写入的图像格式扩展名（如 .png）结尾。</translation>
    </message>
    <message>
        <source>Cannot write %1: %2</source>
        <translation>无法写入 %1：%2</translation>
    </message>
    <message>
        <source>the disk is full or the file too large for it</source>
        <translation>磁盘已满或文件过大</translation>
    </message>
</context>
<context>
    <name>VexaMattingWindow</name>
    <message>
        <source>Matting View</source>
        <translation>抠图视图</translation>
    </message>
    <message>
        <source>This build of the plug-in has no matting view.</source>
        <translation>此版本的插件没有抠图视图。</translation>
    </message>
    <message>
        <source>Matting</source>
        <translation>抠图</translation>
    </message>
    <message>
        <source>Marks:</source>
        <translation>标记:</translation>
    </message>
    <message>
        <source>Left object, right unknown, middle erases</source>
        <translation type="vanished">左键：对象，右键：未知，中键：擦除</translation>
    </message>
    <message>
        <source>Left background, right object, middle unknown</source>
        <translation>左键：背景，右键：对象，中键：未知</translation>
    </message>
    <message>
        <source>Left unknown, right object, middle erases</source>
        <translation>左键：未知，右键：对象，中键：擦除</translation>
    </message>
    <message>
        <source>What the mouse buttons paint</source>
        <translation>鼠标按键绘制的内容</translation>
    </message>
    <message>
        <source> Brush:</source>
        <translation> 画笔:</translation>
    </message>
    <message>
        <source> px</source>
        <translation> 像素</translation>
    </message>
    <message>
        <source>Half-width of a stroke; also the number of smoothing passes of Matte</source>
        <translation type="vanished">笔画宽度的一半；也是“抠图”的平滑次数</translation>
    </message>
    <message>
        <source>Auto Flood</source>
        <translation>自动填充</translation>
    </message>
    <message>
        <source>Flood 16 pixels after each object stroke</source>
        <translation>每次绘制对象笔画后填充 16 像素</translation>
    </message>
    <message>
        <source>Flood</source>
        <translation>填充</translation>
    </message>
    <message>
        <source>Grow the object and background marks up to the unknown band</source>
        <translation>将对象和背景标记扩展到未知带</translation>
    </message>
    <message>
        <source>Matte</source>
        <translation>抠图</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>重置</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>图像</translation>
    </message>
    <message>
        <source>Composite</source>
        <translation>合成</translation>
    </message>
    <message>
        <source>Use as selection</source>
        <translation>用作选区</translation>
    </message>
    <message>
        <source>The matte is now the selection.</source>
        <translation>抠图结果现已成为选区。</translation>
    </message>
    <message>
        <source>Paint an unknown band along the edge, object and background inside and outside it, then Flood and Matte.</source>
        <translation type="vanished">沿边缘绘制未知带，在其内侧绘制对象、外侧绘制背景，然后执行“填充”和“抠图”。</translation>
    </message>
    <message>
        <source>The document this matte was made for is closed.</source>
        <translation>此抠图所属的文档已关闭。</translation>
    </message>
    <message>
        <source>The document has changed size since the matting view opened.</source>
        <translation>打开抠图视图后，文档尺寸已更改。</translation>
    </message>
    <message>
        <source>There is no matte yet.</source>
        <translation>尚无抠图结果。</translation>
    </message>
    <message>
        <source>Left object, Shift + left background, right unknown, middle erases</source>
        <translation>左键：对象，Shift + 左键：背景，右键：未知，中键：擦除</translation>
    </message>
    <message>
        <source>Half-width of a stroke; also the number of smoothing passes of Compute Matte</source>
        <translation>笔画宽度的一半；也是“计算抠图”的平滑次数</translation>
    </message>
    <message>
        <source>Compute Matte</source>
        <translation>计算抠图</translation>
    </message>
    <message>
        <source>Turn the marks into a trimap and refine its unknown band into the matte</source>
        <translation>将标记转换为三分图，并把其中的未知带细化为抠图</translation>
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
        <source>Show:</source>
        <translation>显示：</translation>
    </message>
    <message>
        <source>Paint an unknown band along the edge with the right button, the object inside it with the left and the background outside it with Shift + left, then Flood and Compute Matte.</source>
        <translation>用右键沿边缘涂一条未知带，用左键涂其内的对象，用 Shift + 左键涂其外的背景，然后点“填充”和“计算抠图”。</translation>
    </message>
    <message>
        <source>Wheel: zoom about the pointer; Space + drag: move; Ctrl+0: fit; Ctrl+1: 100 %</source>
        <translation>滚轮：以指针为中心缩放；空格 + 拖动：移动；Ctrl+0：适合窗口；Ctrl+1：100 %</translation>
    </message>
    <message>
        <source>Fit to Window</source>
        <translation>适合窗口</translation>
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
        <translation>需要 OpenGL 2.1 或更高版本，但无法在此显示器上创建可用的 OpenGL 上下文 (%1)</translation>
    </message>
</context>
</TS>
