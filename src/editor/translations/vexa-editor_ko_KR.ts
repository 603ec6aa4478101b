<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ko_KR">
<context>
    <name>VexaActionManager</name>
    <message>
        <source>Delete</source>
        <translation>삭제</translation>
    </message>
</context>
<context>
    <name>VexaContext</name>
    <message>
        <source>The image is empty: a document needs at least one pixel.</source>
        <translation>이미지가 비어 있습니다. 문서에는 최소 한 개의 픽셀이 필요합니다.</translation>
    </message>
    <message>
        <source>Background</source>
        <translation>배경</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>삭제</translation>
    </message>
    <message>
        <source>The image is too large: a document holds at most about two billion pixels.</source>
        <translation>이미지가 너무 큽니다. 문서에는 최대 약 20억 픽셀까지 담을 수 있습니다.</translation>
    </message>
    <message>
        <source>Not enough memory for a %1 x %2 image (%3 MB).</source>
        <translation>%1 x %2 이미지에 필요한 메모리가 부족합니다 (%3 MB).</translation>
    </message>
</context>
<context>
    <name>VexaEditorWindow</name>
    <message>
        <source>&amp;File</source>
        <translation>파일(&amp;F)</translation>
    </message>
    <message>
        <source>&amp;Open...</source>
        <translation>열기(&amp;O)...</translation>
    </message>
    <message>
        <source>Save &amp;Image As...</source>
        <translation>다른 이름으로 이미지 저장(&amp;I)...</translation>
    </message>
    <message>
        <source>&amp;Export Selection Mask...</source>
        <translation>선택 영역 마스크 내보내기(&amp;E)...</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>끝내기(&amp;Q)</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>편집(&amp;E)</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>실행 취소(&amp;U)</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>다시 실행(&amp;R)</translation>
    </message>
    <message>
        <source>Undo Tool Step</source>
        <translation>도구 단계 실행 취소</translation>
    </message>
    <message>
        <source>Alt+Z</source>
        <translatorcomment>notr: key sequence, parsed by QKeySequence in its portable form</translatorcomment>
        <translation>Alt+Z</translation>
    </message>
    <message>
        <source>Redo Tool Step</source>
        <translation>도구 단계 다시 실행</translation>
    </message>
    <message>
        <source>Alt+Shift+Z</source>
        <translatorcomment>notr: key sequence, parsed by QKeySequence in its portable form</translatorcomment>
        <translation>Alt+Shift+Z</translation>
    </message>
    <message>
        <source>&amp;Select</source>
        <translation>선택(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;All</source>
        <translation>모두 선택(&amp;A)</translation>
    </message>
    <message>
        <source>&amp;None</source>
        <translation>선택 해제(&amp;N)</translation>
    </message>
    <message>
        <source>Ctrl+D</source>
        <translatorcomment>notr: key sequence, parsed by QKeySequence in its portable form</translatorcomment>
        <translation>Ctrl+D</translation>
    </message>
    <message>
        <source>&amp;Invert</source>
        <translation>반전(&amp;I)</translation>
    </message>
    <message>
        <source>Ctrl+Shift+I</source>
        <translatorcomment>notr: key sequence, parsed by QKeySequence in its portable form</translatorcomment>
        <translation>Ctrl+Shift+I</translation>
    </message>
    <message>
        <source>Tools</source>
        <translation>도구</translation>
    </message>
    <message>
        <source>%1 is not available in this build of the plug-in</source>
        <translation>%1은(는) 이 빌드의 플러그인에서 사용할 수 없습니다</translation>
    </message>
    <message>
        <source>Foreground colour</source>
        <translation>전경색</translation>
    </message>
    <message>
        <source>Tool options</source>
        <translation>도구 옵션</translation>
    </message>
    <message>
        <source>Cannot open %1: %2</source>
        <translation>%1을(를) 열 수 없습니다: %2</translation>
    </message>
    <message>
        <source>There is no document to save.</source>
        <translation>저장할 문서가 없습니다.</translation>
    </message>
    <message>
        <source>Cannot write %1.</source>
        <translation type="vanished">%1에 쓸 수 없습니다.</translation>
    </message>
    <message>
        <source>There is no document.</source>
        <translation>문서가 없습니다.</translation>
    </message>
    <message>
        <source>No document</source>
        <translation>문서 없음</translation>
    </message>
    <message>
        <source>%1 - Vexa Selections</source>
        <translation>%1 - Vexa Selections</translation>
    </message>
    <message>
        <source>Open Image</source>
        <translation>이미지 열기</translation>
    </message>
    <message>
        <source>Images (*.png *.jpg *.jpeg *.bmp *.gif *.tif *.tiff *.webp)</source>
        <translation type="vanished">이미지 (*.png *.jpg *.jpeg *.bmp *.gif *.tif *.tiff *.webp)</translation>
    </message>
    <message>
        <source>Save Image</source>
        <translation>이미지 저장</translation>
    </message>
    <message>
        <source>PNG image (*.png)</source>
        <translation>PNG 이미지 (*.png)</translation>
    </message>
    <message>
        <source>Export Selection Mask</source>
        <translation>선택 영역 마스크 내보내기</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>Matting View…</source>
        <translation>매트 보기…</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>보기(&amp;V)</translation>
    </message>
    <message>
        <source>Zoom &amp;In</source>
        <translation>확대(&amp;I)</translation>
    </message>
    <message>
        <source>Zoom &amp;Out</source>
        <translation>축소(&amp;O)</translation>
    </message>
    <message>
        <source>&amp;Fit to Window</source>
        <translation>창에 맞추기(&amp;F)</translation>
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
        <translation>실행 취소: %1(&amp;U)</translation>
    </message>
    <message>
        <source>&amp;Redo %1</source>
        <translation>다시 실행: %1(&amp;R)</translation>
    </message>
    <message>
        <source>Images (%1)</source>
        <translation>이미지 (%1)</translation>
    </message>
    <message>
        <source>Opening %1…</source>
        <translation>%1 여는 중…</translation>
    </message>
    <message>
        <source>Saving %1…</source>
        <translation>%1 저장 중…</translation>
    </message>
</context>
<context>
    <name>VexaImageFile</name>
    <message>
        <source>%1 GB</source>
        <translation>%1GB</translation>
    </message>
    <message>
        <source>%1 MB</source>
        <translation>%1MB</translation>
    </message>
    <message>
        <source>too large: %1 x %2 needs %3, more than the %4 this machine allows for one image</source>
        <translation>너무 큽니다: %1 x %2 크기에는 %3이(가) 필요하며, 이 컴퓨터에서 이미지 하나에 허용되는 %4을(를) 넘습니다</translation>
    </message>
    <message>
        <source>empty file</source>
        <translation>빈 파일입니다</translation>
    </message>
    <message>
        <source>not enough memory to convert the %1 x %2 picture to 8 bits a channel</source>
        <translation>%1 x %2 그림을 채널당 8비트로 변환할 메모리가 부족합니다</translation>
    </message>
    <message>
        <source>damaged file: it ends before the data it declares</source>
        <translation>손상된 파일: 선언된 데이터보다 먼저 파일이 끝납니다</translation>
    </message>
</context>
<context>
    <name>VexaImageSave</name>
    <message>
        <source>Cannot write %1: the name has no suffix of an image format written here (such as .png).</source>
        <translation>%1에 쓸 수 없습니다: 이름이 여기서 저장할 수 있는 이미지 형식의 확장자(.png 등)로 끝나지 않습니다.</translation>
    </message>
    <message>
        <source>Cannot write %1: %2</source>
        <translation>%1에 쓸 수 없습니다: %2</translation>
    </message>
    <message>
        <source>the disk is full or the file too large for it</source>
        <translation>디스크가 가득 찼거나 파일이 너무 큽니다</translation>
    </message>
</context>
<context>
    <name>VexaMattingWindow</name>
    <message>
        <source>Matting View</source>
        <translation>매트 보기</translation>
    </message>
    <message>
        <source>This build of the plug-in has no matting view.</source>
        <translation>이 빌드의 플러그인에는 매트 보기가 없습니다.</translation>
    </message>
    <message>
        <source>Matting</source>
        <translation>매트</translation>
    </message>
    <message>
        <source>Marks:</source>
        <translation>표시:</translation>
    </message>
    <message>
        <source>Left object, right unknown, middle erases</source>
        <translation type="vanished">왼쪽: 개체, 오른쪽: 미확정, 가운데: 지우기</translation>
    </message>
    <message>
        <source>Left background, right object, middle unknown</source>
        <translation>왼쪽: 배경, 오른쪽: 개체, 가운데: 미확정</translation>
    </message>
    <message>
        <source>Left unknown, right object, middle erases</source>
        <translation>왼쪽: 미확정, 오른쪽: 개체, 가운데: 지우기</translation>
    </message>
    <message>
        <source>What the mouse buttons paint</source>
        <translation>마우스 버튼으로 칠할 내용</translation>
    </message>
    <message>
        <source> Brush:</source>
        <translation> 브러시:</translation>
    </message>
    <message>
        <source> px</source>
        <translation> 픽셀</translation>
    </message>
    <message>
        <source>Half-width of a stroke; also the number of smoothing passes of Matte</source>
        <translation type="vanished">획 너비의 절반이며, [매트]의 다듬기 반복 횟수이기도 합니다</translation>
    </message>
    <message>
        <source>Auto Flood</source>
        <translation>자동 채우기</translation>
    </message>
    <message>
        <source>Flood 16 pixels after each object stroke</source>
        <translation>개체 획을 칠할 때마다 16픽셀 채우기</translation>
    </message>
    <message>
        <source>Flood</source>
        <translation>채우기</translation>
    </message>
    <message>
        <source>Grow the object and background marks up to the unknown band</source>
        <translation>개체 및 배경 표시를 미확정 띠까지 넓힙니다</translation>
    </message>
    <message>
        <source>Matte</source>
        <translation>매트</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>재설정</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>이미지</translation>
    </message>
    <message>
        <source>Composite</source>
        <translation>합성</translation>
    </message>
    <message>
        <source>Use as selection</source>
        <translation>선택 영역으로 사용</translation>
    </message>
    <message>
        <source>The matte is now the selection.</source>
        <translation>이제 매트가 선택 영역입니다.</translation>
    </message>
    <message>
        <source>Paint an unknown band along the edge, object and background inside and outside it, then Flood and Matte.</source>
        <translation type="vanished">가장자리를 따라 미확정 띠를 칠하고, 그 안쪽에 개체를, 바깥쪽에 배경을 칠한 다음 [채우기]와 [매트]를 실행하십시오.</translation>
    </message>
    <message>
        <source>The document this matte was made for is closed.</source>
        <translation>이 매트를 만든 대상 문서가 닫혔습니다.</translation>
    </message>
    <message>
        <source>The document has changed size since the matting view opened.</source>
        <translation>매트 보기를 연 뒤 문서 크기가 바뀌었습니다.</translation>
    </message>
    <message>
        <source>There is no matte yet.</source>
        <translation>아직 매트가 없습니다.</translation>
    </message>
    <message>
        <source>Left object, Shift + left background, right unknown, middle erases</source>
        <translation>왼쪽: 개체, Shift + 왼쪽: 배경, 오른쪽: 미확정, 가운데: 지우기</translation>
    </message>
    <message>
        <source>Half-width of a stroke; also the number of smoothing passes of Compute Matte</source>
        <translation>획 너비의 절반이며, [매트 계산]의 다듬기 반복 횟수이기도 합니다</translation>
    </message>
    <message>
        <source>Compute Matte</source>
        <translation>매트 계산</translation>
    </message>
    <message>
        <source>Turn the marks into a trimap and refine its unknown band into the matte</source>
        <translation>표시를 트라이맵으로 바꾸고 미확정 띠를 다듬어 매트를 만듭니다</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>실행 취소</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>다시 실행</translation>
    </message>
    <message>
        <source>Show:</source>
        <translation>보기:</translation>
    </message>
    <message>
        <source>Paint an unknown band along the edge with the right button, the object inside it with the left and the background outside it with Shift + left, then Flood and Compute Matte.</source>
        <translation>오른쪽 버튼으로 가장자리를 따라 미확정 띠를, 왼쪽 버튼으로 그 안의 개체를, Shift + 왼쪽 버튼으로 바깥의 배경을 칠한 다음 [채우기]와 [매트 계산]을 누르세요.</translation>
    </message>
    <message>
        <source>Wheel: zoom about the pointer; Space + drag: move; Ctrl+0: fit; Ctrl+1: 100 %</source>
        <translation>휠: 포인터 위치를 기준으로 확대/축소, Space + 드래그: 이동, Ctrl+0: 창에 맞춤, Ctrl+1: 100 %</translation>
    </message>
    <message>
        <source>Fit to Window</source>
        <translation>창에 맞춤</translation>
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
        <translation>플러그인 파일 %1이(가) 없습니다.</translation>
    </message>
    <message>
        <source>The plug-in %1 cannot be loaded: %2</source>
        <translation>플러그인 %1을(를) 불러올 수 없습니다: %2</translation>
    </message>
    <message>
        <source>%1 is not a tools plug-in: it lacks %2.</source>
        <translation>%1은(는) 도구 플러그인이 아닙니다: %2이(가) 없습니다.</translation>
    </message>
</context>
<context>
    <name>VexaSelection</name>
    <message>
        <source>Selection</source>
        <translation>선택 영역</translation>
    </message>
    <message>
        <source>Deselect</source>
        <translation>선택 해제</translation>
    </message>
    <message>
        <source>Invert Selection</source>
        <translation>선택 영역 반전</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>모두 선택</translation>
    </message>
    <message>
        <source>Move Selection</source>
        <translation>선택 영역 이동</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>needs OpenGL 2.1 or later, and no usable OpenGL context could be created on this display (%1)</source>
        <translation>OpenGL 2.1 이상이 필요하지만 이 디스플레이에서 사용할 수 있는 OpenGL 컨텍스트를 만들 수 없습니다 (%1)</translation>
    </message>
</context>
</TS>
