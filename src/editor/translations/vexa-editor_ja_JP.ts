<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja_JP">
<context>
    <name>VexaActionManager</name>
    <message>
        <source>Delete</source>
        <translation>削除</translation>
    </message>
</context>
<context>
    <name>VexaContext</name>
    <message>
        <source>The image is empty: a document needs at least one pixel.</source>
        <translation>画像が空です。ドキュメントには 1 ピクセル以上が必要です。</translation>
    </message>
    <message>
        <source>Background</source>
        <translation>背景</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>削除</translation>
    </message>
    <message>
        <source>The image is too large: a document holds at most about two billion pixels.</source>
        <translation>画像が大きすぎます。ドキュメントに格納できるのは約 20 億ピクセルまでです。</translation>
    </message>
    <message>
        <source>Not enough memory for a %1 x %2 image (%3 MB).</source>
        <translation>%1 x %2 の画像に必要なメモリが足りません (%3 MB)。</translation>
    </message>
</context>
<context>
    <name>VexaEditorWindow</name>
    <message>
        <source>&amp;File</source>
        <translation>ファイル(&amp;F)</translation>
    </message>
    <message>
        <source>&amp;Open...</source>
        <translation>開く(&amp;O)...</translation>
    </message>
    <message>
        <source>Save &amp;Image As...</source>
        <translation>画像に名前を付けて保存(&amp;I)...</translation>
    </message>
    <message>
        <source>&amp;Export Selection Mask...</source>
        <translation>選択範囲マスクを書き出し(&amp;E)...</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>終了(&amp;Q)</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>編集(&amp;E)</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>元に戻す(&amp;U)</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>やり直し(&amp;R)</translation>
    </message>
    <message>
        <source>Undo Tool Step</source>
        <translation>ツールの操作を元に戻す</translation>
    </message>
    <message>
        <source>Alt+Z</source>
        <translatorcomment>notr: key sequence, parsed by QKeySequence in its portable form</translatorcomment>
        <translation>Alt+Z</translation>
    </message>
    <message>
        <source>Redo Tool Step</source>
        <translation>ツールの操作をやり直す</translation>
    </message>
    <message>
        <source>Alt+Shift+Z</source>
        <translatorcomment>notr: key sequence, parsed by QKeySequence in its portable form</translatorcomment>
        <translation>Alt+Shift+Z</translation>
    </message>
    <message>
        <source>&amp;Select</source>
        <translation>選択範囲(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;All</source>
        <translation>すべてを選択(&amp;A)</translation>
    </message>
    <message>
        <source>&amp;None</source>
        <translation>選択を解除(&amp;N)</translation>
    </message>
    <message>
        <source>Ctrl+D</source>
        <translatorcomment>notr: key sequence, parsed by QKeySequence in its portable form</translatorcomment>
        <translation>Ctrl+D</translation>
    </message>
    <message>
        <source>&amp;Invert</source>
        <translation>選択範囲を反転(&amp;I)</translation>
    </message>
    <message>
        <source>Ctrl+Shift+I</source>
        <translatorcomment>notr: key sequence, parsed by QKeySequence in its portable form</translatorcomment>
        <translation>Ctrl+Shift+I</translation>
    </message>
    <message>
        <source>Tools</source>
        <translation>ツール</translation>
    </message>
    <message>
        <source>%1 is not available in this build of the plug-in</source>
        <translation>%1 はこのビルドのプラグインでは使用できません</translation>
    </message>
    <message>
        <source>Foreground colour</source>
        <translation>描画色</translation>
    </message>
    <message>
        <source>Tool options</source>
        <translation>ツールオプション</translation>
    </message>
    <message>
        <source>Cannot open %1: %2</source>
        <translation>%1 を開けません: %2</translation>
    </message>
    <message>
        <source>There is no document to save.</source>
        <translation>保存するドキュメントがありません。</translation>
    </message>
    <message>
        <source>Cannot write %1.</source>
        <translation type="vanished">%1 に書き込めません。</translation>
    </message>
    <message>
        <source>There is no document.</source>
        <translation>ドキュメントがありません。</translation>
    </message>
    <message>
        <source>No document</source>
        <translation>ドキュメントなし</translation>
    </message>
    <message>
        <source>%1 - Vexa Selections</source>
        <translation>%1 - Vexa Selections</translation>
    </message>
    <message>
        <source>Open Image</source>
        <translation>画像を開く</translation>
    </message>
    <message>
        <source>Images (*.png *.jpg *.jpeg *.bmp *.gif *.tif *.tiff *.webp)</source>
        <translation type="vanished">画像 (*.png *.jpg *.jpeg *.bmp *.gif *.tif *.tiff *.webp)</translation>
    </message>
    <message>
        <source>Save Image</source>
        <translation>画像を保存</translation>
    </message>
    <message>
        <source>PNG image (*.png)</source>
        <translation>PNG 画像 (*.png)</translation>
    </message>
    <message>
        <source>Export Selection Mask</source>
        <translation>選択範囲マスクを書き出し</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>Matting View…</source>
        <translation>切り抜きビュー…</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>表示(&amp;V)</translation>
    </message>
    <message>
        <source>Zoom &amp;In</source>
        <translation>ズームイン(&amp;I)</translation>
    </message>
    <message>
        <source>Zoom &amp;Out</source>
        <translation>ズームアウト(&amp;O)</translation>
    </message>
    <message>
        <source>&amp;Fit to Window</source>
        <translation>ウィンドウに合わせる(&amp;F)</translation>
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
        <translation>元に戻す: %1(&amp;U)</translation>
    </message>
    <message>
        <source>&amp;Redo %1</source>
        <translation>やり直し: %1(&amp;R)</translation>
    </message>
    <message>
        <source>Images (%1)</source>
        <translation>画像 (%1)</translation>
    </message>
    <message>
        <source>Opening %1…</source>
        <translation>%1 を開いています…</translation>
    </message>
    <message>
        <source>Saving %1…</source>
        <translation>%1 を保存しています…</translation>
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
        <translation>大きすぎます: %1 x %2 には %3 が必要で、このマシンで 1 枚の画像に使える %4 を超えています</translation>
    </message>
    <message>
        <source>empty file</source>
        <translation>空のファイルです</translation>
    </message>
    <message>
        <source>not enough memory to convert the %1 x %2 picture to 8 bits a channel</source>
        <translation>%1 x %2 の画像をチャンネルあたり 8 ビットに変換するためのメモリが足りません</translation>
    </message>
    <message>
        <source>damaged file: it ends before the data it declares</source>
        <translation>破損したファイル: 宣言されたデータより前でファイルが終わっています</translation>
    </message>
</context>
<context>
    <name>VexaImageSave</name>
    <message>
        <source>Cannot write %1: the name has no suffix of an image format written here (such as .png).</source>
        <translation>%1 に書き込めません: 名前の末尾が、ここで書き出せる画像形式の拡張子 (.png など) ではありません。</translation>
    </message>
    <message>
        <source>Cannot write %1: %2</source>
        <translation>%1 に書き込めません: %2</translation>
    </message>
    <message>
        <source>the disk is full or the file too large for it</source>
        <translation>ディスクがいっぱいか、ファイルが大きすぎます</translation>
    </message>
</context>
<context>
    <name>VexaMattingWindow</name>
    <message>
        <source>Matting View</source>
        <translation>切り抜きビュー</translation>
    </message>
    <message>
        <source>This build of the plug-in has no matting view.</source>
        <translation>このビルドのプラグインには切り抜きビューがありません。</translation>
    </message>
    <message>
        <source>Matting</source>
        <translation>切り抜き</translation>
    </message>
    <message>
        <source>Marks:</source>
        <translation>マーク:</translation>
    </message>
    <message>
        <source>Left object, right unknown, middle erases</source>
        <translation type="vanished">左: オブジェクト、右: 未確定、中: 消去</translation>
    </message>
    <message>
        <source>Left background, right object, middle unknown</source>
        <translation>左: 背景、右: オブジェクト、中: 未確定</translation>
    </message>
    <message>
        <source>Left unknown, right object, middle erases</source>
        <translation>左: 未確定、右: オブジェクト、中: 消去</translation>
    </message>
    <message>
        <source>What the mouse buttons paint</source>
        <translation>マウスボタンで描く内容</translation>
    </message>
    <message>
        <source> Brush:</source>
        <translation> ブラシ:</translation>
    </message>
    <message>
        <source> px</source>
        <translation> px</translation>
    </message>
    <message>
        <source>Half-width of a stroke; also the number of smoothing passes of Matte</source>
        <translation type="vanished">ストロークの幅の半分。「切り抜き」のスムージング回数も兼ねます</translation>
    </message>
    <message>
        <source>Auto Flood</source>
        <translation>自動塗りつぶし</translation>
    </message>
    <message>
        <source>Flood 16 pixels after each object stroke</source>
        <translation>オブジェクトのストロークごとに 16 ピクセル塗りつぶします</translation>
    </message>
    <message>
        <source>Flood</source>
        <translation>塗りつぶし</translation>
    </message>
    <message>
        <source>Grow the object and background marks up to the unknown band</source>
        <translation>オブジェクトと背景のマークを未確定の帯まで広げます</translation>
    </message>
    <message>
        <source>Matte</source>
        <translation>切り抜き</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>リセット</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>画像</translation>
    </message>
    <message>
        <source>Composite</source>
        <translation>合成</translation>
    </message>
    <message>
        <source>Use as selection</source>
        <translation>選択範囲として使用</translation>
    </message>
    <message>
        <source>The matte is now the selection.</source>
        <translation>切り抜きが選択範囲になりました。</translation>
    </message>
    <message>
        <source>Paint an unknown band along the edge, object and background inside and outside it, then Flood and Matte.</source>
        <translation type="vanished">境界に沿って未確定の帯を描き、その内側にオブジェクト、外側に背景を描いてから、「塗りつぶし」と「切り抜き」を実行します。</translation>
    </message>
    <message>
        <source>The document this matte was made for is closed.</source>
        <translation>この切り抜きの対象のドキュメントは閉じられています。</translation>
    </message>
    <message>
        <source>The document has changed size since the matting view opened.</source>
        <translation>切り抜きビューを開いた後で、ドキュメントのサイズが変更されました。</translation>
    </message>
    <message>
        <source>There is no matte yet.</source>
        <translation>切り抜きはまだありません。</translation>
    </message>
    <message>
        <source>Left object, Shift + left background, right unknown, middle erases</source>
        <translation>左: オブジェクト、Shift + 左: 背景、右: 未確定、中: 消去</translation>
    </message>
    <message>
        <source>Half-width of a stroke; also the number of smoothing passes of Compute Matte</source>
        <translation>ストロークの幅の半分。「切り抜きを計算」のスムージング回数も兼ねます</translation>
    </message>
    <message>
        <source>Compute Matte</source>
        <translation>切り抜きを計算</translation>
    </message>
    <message>
        <source>Turn the marks into a trimap and refine its unknown band into the matte</source>
        <translation>マークをトライマップに変換し、未確定の帯を切り抜きに仕上げます</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>元に戻す</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>やり直し</translation>
    </message>
    <message>
        <source>Show:</source>
        <translation>表示:</translation>
    </message>
    <message>
        <source>Paint an unknown band along the edge with the right button, the object inside it with the left and the background outside it with Shift + left, then Flood and Compute Matte.</source>
        <translation>右ボタンで輪郭に沿って未確定の帯を、左ボタンでその内側のオブジェクトを、Shift + 左ボタンで外側の背景を塗り、「塗りつぶし」と「切り抜きを計算」を実行します。</translation>
    </message>
    <message>
        <source>Wheel: zoom about the pointer; Space + drag: move; Ctrl+0: fit; Ctrl+1: 100 %</source>
        <translation>ホイール: ポインター位置でズーム / Space + ドラッグ: 移動 / Ctrl+0: 全体表示 / Ctrl+1: 100 %</translation>
    </message>
    <message>
        <source>Fit to Window</source>
        <translation>ウィンドウに合わせる</translation>
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
        <translation>プラグインファイル %1 が存在しません。</translation>
    </message>
    <message>
        <source>The plug-in %1 cannot be loaded: %2</source>
        <translation>プラグイン %1 を読み込めません: %2</translation>
    </message>
    <message>
        <source>%1 is not a tools plug-in: it lacks %2.</source>
        <translation>%1 はツールプラグインではありません: %2 がありません。</translation>
    </message>
</context>
<context>
    <name>VexaSelection</name>
    <message>
        <source>Selection</source>
        <translation>選択範囲</translation>
    </message>
    <message>
        <source>Deselect</source>
        <translation>選択を解除</translation>
    </message>
    <message>
        <source>Invert Selection</source>
        <translation>選択範囲を反転</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>すべてを選択</translation>
    </message>
    <message>
        <source>Move Selection</source>
        <translation>選択範囲を移動</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>needs OpenGL 2.1 or later, and no usable OpenGL context could be created on this display (%1)</source>
        <translation>OpenGL 2.1 以降が必要ですが、このディスプレイでは使用できる OpenGL コンテキストを作成できませんでした (%1)</translation>
    </message>
</context>
</TS>
