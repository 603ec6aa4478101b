<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_TW">
<context>
    <name>VexaActionManager</name>
    <message>
        <source>Delete</source>
        <translation>刪除</translation>
    </message>
</context>
<context>
    <name>VexaContext</name>
    <message>
        <source>The image is empty: a document needs at least one pixel.</source>
        <translation>影像是空的：文件至少需要一個像素。</translation>
    </message>
    <message>
        <source>Background</source>
        <translation>背景</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>刪除</translation>
    </message>
    <message>
        <source>The image is too large: a document holds at most about two billion pixels.</source>
        <translation>影像過大：文件最多只能容納約 20 億像素。</translation>
    </message>
    <message>
        <source>Not enough memory for a %1 x %2 image (%3 MB).</source>
        <translation>記憶體不足，無法容納 %1 x %2 的影像 (%3 MB)。</translation>
    </message>
</context>
<context>
    <name>VexaEditorWindow</name>
    <message>
        <source>&amp;File</source>
        <translation>檔案(&amp;F)</translation>
    </message>
    <message>
        <source>&amp;Open...</source>
        <translation>開啟(&amp;O)...</translation>
    </message>
    <message>
        <source>Save &amp;Image As...</source>
        <translation>影像另存新檔(&amp;I)...</translation>
    </message>
    <message>
        <source>&amp;Export Selection Mask...</source>
        <translation>匯出選取範圍遮色片(&amp;E)...</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>結束(&amp;Q)</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>編輯(&amp;E)</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>復原(&amp;U)</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>重做(&amp;R)</translation>
    </message>
    <message>
        <source>Undo Tool Step</source>
        <translation>復原工具步驟</translation>
    </message>
    <message>
        <source>Alt+Z</source>
        <translatorcomment>notr: key sequence, parsed by QKeySequence in its portable form</translatorcomment>
        <translation>Alt+Z</translation>
    </message>
    <message>
        <source>Redo Tool Step</source>
        <translation>重做工具步驟</translation>
    </message>
    <message>
        <source>Alt+Shift+Z</source>
        <translatorcomment>notr: key sequence, parsed by QKeySequence in its portable form</translatorcomment>
        <translation>Alt+Shift+Z</translation>
    </message>
    <message>
        <source>&amp;Select</source>
        <translation>選取(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;All</source>
        <translation>全部(&amp;A)</translation>
    </message>
    <message>
        <source>&amp;None</source>
        <translation>取消選取(&amp;N)</translation>
    </message>
    <message>
        <source>Ctrl+D</source>
        <translatorcomment>notr: key sequence, parsed by QKeySequence in its portable form</translatorcomment>
        <translation>Ctrl+D</translation>
    </message>
    <message>
        <source>&amp;Invert</source>
        <translation>反轉(&amp;I)</translation>
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
        <translation>此版本的外掛程式不提供 %1</translation>
    </message>
    <message>
        <source>Foreground colour</source>
        <translation>前景色</translation>
    </message>
    <message>
        <source>Tool options</source>
        <translation>工具選項</translation>
    </message>
    <message>
        <source>Cannot open %1: %2</source>
        <translation>無法開啟 %1：%2</translation>
    </message>
    <message>
        <source>There is no document to save.</source>
        <translation>沒有可儲存的文件。</translation>
    </message>
    <message>
        <source>Cannot write %1.</source>
        <translation type="vanished">無法寫入 %1。</translation>
    </message>
    <message>
        <source>There is no document.</source>
        <translation>沒有文件。</translation>
    </message>
    <message>
        <source>No document</source>
        <translation>無文件</translation>
    </message>
    <message>
        <source>%1 - Vexa Selections</source>
        <translation>%1 - Vexa Selections</translation>
    </message>
    <message>
        <source>Open Image</source>
        <translation>開啟影像</translation>
    </message>
    <message>
        <source>Images (*.png *.jpg *.jpeg *.bmp *.gif *.tif *.tiff *.webp)</source>
        <translation type="vanished">影像 (*.png *.jpg *.jpeg *.bmp *.gif *.tif *.tiff *.webp)</translation>
    </message>
    <message>
        <source>Save Image</source>
        <translation>儲存影像</translation>
    </message>
    <message>
        <source>PNG image (*.png)</source>
        <translation>PNG 影像 (*.png)</translation>
    </message>
    <message>
        <source>Export Selection Mask</source>
        <translation>匯出選取範圍遮色片</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>Matting View…</source>
        <translation>去背檢視…</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>檢視(&amp;V)</translation>
    </message>
    <message>
        <source>Zoom &amp;In</source>
        <translation>放大(&amp;I)</translation>
    </message>
    <message>
        <source>Zoom &amp;Out</source>
        <translation>縮小(&amp;O)</translation>
    </message>
    <message>
        <source>&amp;Fit to Window</source>
        <translation>符合視窗(&amp;F)</translation>
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
        <translation>復原 %1(&amp;U)</translation>
    </message>
    <message>
        <source>&amp;Redo %1</source>
        <translation>重做 %1(&amp;R)</translation>
    </message>
    <message>
        <source>Images (%1)</source>
        <translation>影像 (%1)</translation>
    </message>
    <message>
        <source>Opening %1…</source>
        <translation>正在開啟 %1…</translation>
    </message>
    <message>
        <source>Saving %1…</source>
        <translation>正在儲存 %1…</translation>
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
        <translation>過大：%1 x %2 需要 %3，超過了本機為單一影像允許的 %4</translation>
    </message>
    <message>
        <source>empty file</source>
        <translation>空白檔案</translation>
    </message>
    <message>
        <source>not enough memory to convert the %1 x %2 picture to 8 bits a channel</source>
        <translation>記憶體不足，無法將 %1 x %2 的圖片轉換為每通道 8 位元</translation>
    </message>
    <message>
        <source>damaged file: it ends before the data it declares</source>
        <translation>檔案已損毀：檔案在其宣告的資料之前就結束了</translation>
    </message>
</context>
<context>
    <name>VexaImageSave</name>
    <message>
        <source>Cannot write %1: the name has no suffix of an image format written here (such as .png).</source>
        <translation>無法寫入 %1：檔名並非以此處可寫入的影像格式副檔名（如 .png）結尾。</translation>
    </message>
    <message>
        <source>Cannot write %1: %2</source>
        <translation>無法寫入 %1：%2</translation>
    </message>
    <message>
        <source>the disk is full or the file too large for it</source>
        <translation>磁碟已滿或檔案過大</translation>
    </message>
</context>
<context>
    <name>VexaMattingWindow</name>
    <message>
        <source>Matting View</source>
        <translation>去背檢視</translation>
    </message>
    <message>
        <source>This build of the plug-in has no matting view.</source>
        <translation>此版本的外掛程式沒有去背檢視。</translation>
    </message>
    <message>
        <source>Matting</source>
        <translation>去背</translation>
    </message>
    <message>
        <source>Marks:</source>
        <translation>標記:</translation>
    </message>
    <message>
        <source>Left object, right unknown, middle erases</source>
        <translation type="vanished">左鍵：物件，右鍵：未知，中鍵：擦除</translation>
    </message>
    <message>
        <source>Left background, right object, middle unknown</source>
        <translation>左鍵：背景，右鍵：物件，中鍵：未知</translation>
    </message>
    <message>
        <source>Left unknown, right object, middle erases</source>
        <translation>左鍵：未知，右鍵：物件，中鍵：擦除</translation>
    </message>
    <message>
        <source>What the mouse buttons paint</source>
        <translation>滑鼠按鍵繪製的內容</translation>
    </message>
    <message>
        <source> Brush:</source>
        <translation> 筆刷:</translation>
    </message>
    <message>
        <source> px</source>
        <translation> 像素</translation>
    </message>
    <message>
        <source>Half-width of a stroke; also the number of smoothing passes of Matte</source>
        <translation type="vanished">筆畫寬度的一半；也是「去背」的平滑次數</translation>
    </message>
    <message>
        <source>Auto Flood</source>
        <translation>自動填滿</translation>
    </message>
    <message>
        <source>Flood 16 pixels after each object stroke</source>
        <translation>每次繪製物件筆畫後填滿 16 像素</translation>
    </message>
    <message>
        <source>Flood</source>
        <translation>填滿</translation>
    </message>
    <message>
        <source>Grow the object and background marks up to the unknown band</source>
        <translation>將物件和背景標記擴展到未知帶</translation>
    </message>
    <message>
        <source>Matte</source>
        <translation>去背</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>重設</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>影像</translation>
    </message>
    <message>
        <source>Composite</source>
        <translation>合成</translation>
    </message>
    <message>
        <source>Use as selection</source>
        <translation>用作選取範圍</translation>
    </message>
    <message>
        <source>The matte is now the selection.</source>
        <translation>去背結果現已成為選取範圍。</translation>
    </message>
    <message>
        <source>Paint an unknown band along the edge, object and background inside and outside it, then Flood and Matte.</source>
        <translation type="vanished">沿邊緣繪製未知帶，在其內側繪製物件、外側繪製背景，然後執行「填滿」和「去背」。</translation>
    </message>
    <message>
        <source>The document this matte was made for is closed.</source>
        <translation>此去背所屬的文件已關閉。</translation>
    </message>
    <message>
        <source>The document has changed size since the matting view opened.</source>
        <translation>開啟去背檢視後，文件尺寸已變更。</translation>
    </message>
    <message>
        <source>There is no matte yet.</source>
        <translation>尚無去背結果。</translation>
    </message>
    <message>
        <source>Left object, Shift + left background, right unknown, middle erases</source>
        <translation>左鍵：物件，Shift + 左鍵：背景，右鍵：未知，中鍵：擦除</translation>
    </message>
    <message>
        <source>Half-width of a stroke; also the number of smoothing passes of Compute Matte</source>
        <translation>筆畫寬度的一半；也是「計算去背」的平滑次數</translation>
    </message>
    <message>
        <source>Compute Matte</source>
        <translation>計算去背</translation>
    </message>
    <message>
        <source>Turn the marks into a trimap and refine its unknown band into the matte</source>
        <translation>將標記轉為三分圖，並把其中的未知帶細化為去背結果</translation>
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
        <source>Show:</source>
        <translation>顯示：</translation>
    </message>
    <message>
        <source>Paint an unknown band along the edge with the right button, the object inside it with the left and the background outside it with Shift + left, then Flood and Compute Matte.</source>
        <translation>用右鍵沿邊緣塗一條未知帶，用左鍵塗其內的物件，用 Shift + 左鍵塗其外的背景，然後按「填滿」與「計算去背」。</translation>
    </message>
    <message>
        <source>Wheel: zoom about the pointer; Space + drag: move; Ctrl+0: fit; Ctrl+1: 100 %</source>
        <translation>滾輪：以指標為中心縮放；空白鍵 + 拖曳：移動；Ctrl+0：符合視窗；Ctrl+1：100 %</translation>
    </message>
    <message>
        <source>Fit to Window</source>
        <translation>符合視窗</translation>
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
        <translation>外掛程式檔案 %1 不存在。</translation>
    </message>
    <message>
        <source>The plug-in %1 cannot be loaded: %2</source>
        <translation>無法載入外掛程式 %1：%2</translation>
    </message>
    <message>
        <source>%1 is not a tools plug-in: it lacks %2.</source>
        <translation>%1 不是工具外掛程式：缺少 %2。</translation>
    </message>
</context>
<context>
    <name>VexaSelection</name>
    <message>
        <source>Selection</source>
        <translation>選取範圍</translation>
    </message>
    <message>
        <source>Deselect</source>
        <translation>取消選取</translation>
    </message>
    <message>
        <source>Invert Selection</source>
        <translation>反轉選取範圍</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>全選</translation>
    </message>
    <message>
        <source>Move Selection</source>
        <translation>移動選取範圍</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>needs OpenGL 2.1 or later, and no usable OpenGL context could be created on this display (%1)</source>
        <translation>需要 OpenGL 2.1 或更新版本，但無法在此顯示器上建立可用的 OpenGL 內容 (%1)</translation>
    </message>
</context>
</TS>
