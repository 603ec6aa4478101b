<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja_JP">
<context>
    <name>QuickSelectGLWidget</name>
    <message>
        <source>Failed to compile: &apos;TrimapShader.fp&apos;
</source>
        <translation>コンパイルに失敗しました: &apos;TrimapShader.fp&apos;
</translation>
    </message>
    <message>
        <source>Failed to compile: &apos;ExpandShader.fp&apos;
</source>
        <translation>コンパイルに失敗しました: &apos;ExpandShader.fp&apos;
</translation>
    </message>
    <message>
        <source>Failed to compile: &apos;FastFillShader.fp&apos;
</source>
        <translation>コンパイルに失敗しました: &apos;FastFillShader.fp&apos;
</translation>
    </message>
    <message>
        <source>Failed to compile: &apos;RobustShader.fp&apos;
</source>
        <translation>コンパイルに失敗しました: &apos;RobustShader.fp&apos;
</translation>
    </message>
    <message>
        <source>Failed to compile: &apos;closedShader.fp&apos;
</source>
        <translation>コンパイルに失敗しました: &apos;closedShader.fp&apos;
</translation>
    </message>
    <message>
        <source>Failed to compile: &apos;resultShader.fp&apos;
</source>
        <translation>コンパイルに失敗しました: &apos;resultShader.fp&apos;
</translation>
    </message>
    <message>
        <source>Failed to link &apos;TrimapShader&apos;
</source>
        <translation>リンクに失敗しました: &apos;TrimapShader&apos;
</translation>
    </message>
    <message>
        <source>Failed to link &apos;ExpandShader&apos;
</source>
        <translation>リンクに失敗しました: &apos;ExpandShader&apos;
</translation>
    </message>
    <message>
        <source>Failed to link &apos;FastFillShader&apos;
</source>
        <translation>リンクに失敗しました: &apos;FastFillShader&apos;
</translation>
    </message>
    <message>
        <source>Failed to link &apos;RobustShader&apos;
</source>
        <translation>リンクに失敗しました: &apos;RobustShader&apos;
</translation>
    </message>
    <message>
        <source>Failed to link &apos;closedShader&apos;
</source>
        <translation>リンクに失敗しました: &apos;closedShader&apos;
</translation>
    </message>
    <message>
        <source>Failed to link &apos;resultShader&apos;
</source>
        <translation>リンクに失敗しました: &apos;resultShader&apos;
</translation>
    </message>
    <message>
        <source>Failed to open file:
&apos;%1&apos;.</source>
        <translation>ファイルを開けませんでした:
&apos;%1&apos;。</translation>
    </message>
    <message>
        <source>The matting view needs OpenGL 2.1; this driver offers only %1 %2.%3.</source>
        <translation>マッティングビューには OpenGL 2.1 が必要です。このドライバーは %1 %2.%3 しか提供していません。</translation>
    </message>
    <message>
        <source>The image is %1 x %2 pixels, larger than this OpenGL&apos;s largest texture (%3 pixels a side).</source>
        <translation>画像は %1 x %2 ピクセルで、この OpenGL の最大テクスチャ (一辺 %3 ピクセル) より大きいです。</translation>
    </message>
    <message>
        <source>This OpenGL cannot render into a %1 x %2 texture.</source>
        <translation>この OpenGL は %1 x %2 のテクスチャに描画できません。</translation>
    </message>
</context>
<context>
    <name>Thread</name>
    <message>
        <source>Initializing ..</source>
        <translation>初期化中 ..</translation>
    </message>
    <message>
        <source>Initialize done.</source>
        <translation>初期化が完了しました。</translation>
    </message>
    <message>
        <source>Marking..</source>
        <translation>マーク処理中..</translation>
    </message>
    <message>
        <source>Mark done</source>
        <translation>マーク処理完了</translation>
    </message>
    <message>
        <source>Please mark foreground objects.</source>
        <translation>前景のオブジェクトをマークしてください。</translation>
    </message>
    <message>
        <source>Please mark background regions.</source>
        <translation>背景の領域をマークしてください。</translation>
    </message>
    <message>
        <source>Alpha Extracting ..</source>
        <translation>アルファを抽出中 ..</translation>
    </message>
    <message>
        <source>Alpha Extract done ..</source>
        <translation>アルファの抽出が完了 ..</translation>
    </message>
    <message>
        <source>Refining Edges ..</source>
        <translation>エッジを調整中 ..</translation>
    </message>
</context>
<context>
    <name>VexaToolLassoPolygon</name>
    <message>
        <source>Alt+Z to delete/recover latest point, double click to close the path</source>
        <translation>Alt+Z で最後の点を削除/復元、ダブルクリックでパスを閉じます</translation>
    </message>
</context>
<context>
    <name>VexaToolLassoPolygonWidgetClass</name>
    <message>
        <source>Polygon Lasso Window</source>
        <translation>多角形選択</translation>
    </message>
    <message>
        <source>Control Points:</source>
        <translation>頂点:</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>取り消し</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>やり直し</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>クリア</translation>
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
        <translation>しきい値:</translation>
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
        <translation>クイック選択</translation>
    </message>
    <message>
        <source>Applying...</source>
        <translation>適用しています...</translation>
    </message>
</context>
<context>
    <name>VexaToolQuickSelectWidget</name>
    <message>
        <source>Quick Select Tool</source>
        <translation>クイック選択ツール</translation>
    </message>
    <message>
        <source>Step1:Mark Fore/Background</source>
        <translation>ステップ 1: 前景/背景をマーク</translation>
    </message>
    <message>
        <source>Mark Foreground</source>
        <translation>前景をマーク</translation>
    </message>
    <message>
        <source>Mark Background</source>
        <translation>背景をマーク</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>プレビュー</translation>
    </message>
    <message>
        <source>Step2:Modify Boundary</source>
        <translation>ステップ 2: 境界を修正</translation>
    </message>
    <message>
        <source>Mark Boundary</source>
        <translation>境界をマーク</translation>
    </message>
    <message>
        <source>Clear Marks</source>
        <translation type="vanished">マークを消去</translation>
    </message>
    <message>
        <source>Alpha Extract</source>
        <translation>アルファを抽出</translation>
    </message>
    <message>
        <source>Pen settings</source>
        <translation>ペンの設定</translation>
    </message>
    <message>
        <source>Mark Radius: </source>
        <translation>マークの半径: </translation>
    </message>
    <message>
        <source>Sensitivity: </source>
        <translation>感度: </translation>
    </message>
    <message>
        <source>View Settings</source>
        <translation>表示設定</translation>
    </message>
    <message>
        <source>Show User Marks</source>
        <translation>マークを表示</translation>
    </message>
    <message>
        <source>View Image</source>
        <translation>画像を表示</translation>
    </message>
    <message>
        <source>View Matte</source>
        <translation>切り抜きを表示</translation>
    </message>
    <message>
        <source>View Alpha</source>
        <translation>アルファを表示</translation>
    </message>
    <message>
        <source>View Nodes</source>
        <translation>ノードを表示</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>リセット</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>キャンセル</translation>
    </message>
    <message>
        <source>Initializing...</source>
        <translation>初期化中...</translation>
    </message>
    <message>
        <source>Save Image</source>
        <translation>画像を保存</translation>
    </message>
    <message>
        <source>Image Files (*.bmp *.gif *.jpg *.jpeg *.png)</source>
        <translation>画像ファイル (*.bmp *.gif *.jpg *.jpeg *.png)</translation>
    </message>
    <message>
        <source>The document could not be rendered: there is nothing to select from.</source>
        <translation>ドキュメントを描画できませんでした。選択できるものがありません。</translation>
    </message>
    <message>
        <source>Refine Edges</source>
        <translation>エッジを調整</translation>
    </message>
    <message>
        <source>Paint foreground marks (F)</source>
        <translation>前景をマーク (F)</translation>
    </message>
    <message>
        <source>Paint background marks (B)</source>
        <translation>背景をマーク (B)</translation>
    </message>
    <message>
        <source>Paint the boundary band by hand (M)</source>
        <translation>境界の帯を手で塗る (M)</translation>
    </message>
    <message>
        <source>Erase the marks you paint over (E)</source>
        <translation>なぞったマークを消す (E)</translation>
    </message>
    <message>
        <source>Cut the object out along the marks (P)</source>
        <translation>マークに沿ってオブジェクトを切り抜く (P)</translation>
    </message>
    <message>
        <source>Turn the boundary band into soft edges (A)</source>
        <translation>境界の帯を柔らかい輪郭にする (A)</translation>
    </message>
    <message>
        <source>Erase Marks</source>
        <translation>マーク消しゴム</translation>
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
        <translation>幅:</translation>
    </message>
    <message>
        <source>H:</source>
        <translation>高さ:</translation>
    </message>
    <message>
        <source>Ok</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>VexaToolSelectionColorRangeWidgetClass</name>
    <message>
        <source>Color Range</source>
        <translation>色域指定</translation>
    </message>
    <message>
        <source>Select Color</source>
        <translation>色の選択</translation>
    </message>
    <message>
        <source>From:</source>
        <translation>取得元:</translation>
    </message>
    <message>
        <source>Color Picker</source>
        <translation>スポイト</translation>
    </message>
    <message>
        <source>Mode:</source>
        <translation>モード:</translation>
    </message>
    <message>
        <source>Tolerance:</source>
        <translation>許容値:</translation>
    </message>
    <message>
        <source>Quick View:</source>
        <translation>プレビュー:</translation>
    </message>
    <message>
        <source>Selection</source>
        <translation>選択範囲</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>画像</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>キャンセル</translation>
    </message>
</context>
<context>
    <name>VexaToolSelectionWidget</name>
    <message>
        <source>Drag with the right mouse button to subtract in any mode</source>
        <translation>どのモードでもマウスの右ボタンでドラッグすると一部削除します</translation>
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
        <translation>新規選択</translation>
    </message>
    <message>
        <source>selection</source>
        <translatorcomment>notr: style-sheet hook (dynamic property class) of the mode buttons</translatorcomment>
        <translation>selection</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>選択範囲に追加</translation>
    </message>
    <message>
        <source>Substract</source>
        <translation>選択範囲から一部削除</translation>
    </message>
    <message>
        <source>Intersect</source>
        <translation>選択範囲との共通範囲</translation>
    </message>
    <message>
        <source>Feather:</source>
        <translation>境界をぼかす:</translation>
    </message>
    <message>
        <source>px</source>
        <translation>px</translation>
    </message>
</context>
</TS>
