<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ko_KR">
<context>
    <name>QuickSelectGLWidget</name>
    <message>
        <source>Failed to compile: &apos;TrimapShader.fp&apos;
</source>
        <translation>컴파일 실패: &apos;TrimapShader.fp&apos;
</translation>
    </message>
    <message>
        <source>Failed to compile: &apos;ExpandShader.fp&apos;
</source>
        <translation>컴파일 실패: &apos;ExpandShader.fp&apos;
</translation>
    </message>
    <message>
        <source>Failed to compile: &apos;FastFillShader.fp&apos;
</source>
        <translation>컴파일 실패: &apos;FastFillShader.fp&apos;
</translation>
    </message>
    <message>
        <source>Failed to compile: &apos;RobustShader.fp&apos;
</source>
        <translation>컴파일 실패: &apos;RobustShader.fp&apos;
</translation>
    </message>
    <message>
        <source>Failed to compile: &apos;closedShader.fp&apos;
</source>
        <translation>컴파일 실패: &apos;closedShader.fp&apos;
</translation>
    </message>
    <message>
        <source>Failed to compile: &apos;resultShader.fp&apos;
</source>
        <translation>컴파일 실패: &apos;resultShader.fp&apos;
</translation>
    </message>
    <message>
        <source>Failed to link &apos;TrimapShader&apos;
</source>
        <translation>링크 실패: &apos;TrimapShader&apos;
</translation>
    </message>
    <message>
        <source>Failed to link &apos;ExpandShader&apos;
</source>
        <translation>링크 실패: &apos;ExpandShader&apos;
</translation>
    </message>
    <message>
        <source>Failed to link &apos;FastFillShader&apos;
</source>
        <translation>링크 실패: &apos;FastFillShader&apos;
</translation>
    </message>
    <message>
        <source>Failed to link &apos;RobustShader&apos;
</source>
        <translation>링크 실패: &apos;RobustShader&apos;
</translation>
    </message>
    <message>
        <source>Failed to link &apos;closedShader&apos;
</source>
        <translation>링크 실패: &apos;closedShader&apos;
</translation>
    </message>
    <message>
        <source>Failed to link &apos;resultShader&apos;
</source>
        <translation>링크 실패: &apos;resultShader&apos;
</translation>
    </message>
    <message>
        <source>Failed to open file:
&apos;%1&apos;.</source>
        <translation>파일을 열 수 없습니다:
&apos;%1&apos;.</translation>
    </message>
    <message>
        <source>The matting view needs OpenGL 2.1; this driver offers only %1 %2.%3.</source>
        <translation>매팅 보기에는 OpenGL 2.1이 필요합니다. 이 드라이버는 %1 %2.%3만 제공합니다.</translation>
    </message>
    <message>
        <source>The image is %1 x %2 pixels, larger than this OpenGL&apos;s largest texture (%3 pixels a side).</source>
        <translation>이미지가 %1 x %2 픽셀로, 이 OpenGL의 최대 텍스처(한 변 %3 픽셀)보다 큽니다.</translation>
    </message>
    <message>
        <source>This OpenGL cannot render into a %1 x %2 texture.</source>
        <translation>이 OpenGL은 %1 x %2 텍스처에 그릴 수 없습니다.</translation>
    </message>
</context>
<context>
    <name>Thread</name>
    <message>
        <source>Initializing ..</source>
        <translation>초기화 중 ..</translation>
    </message>
    <message>
        <source>Initialize done.</source>
        <translation>초기화 완료.</translation>
    </message>
    <message>
        <source>Marking..</source>
        <translation>표시 처리 중..</translation>
    </message>
    <message>
        <source>Mark done</source>
        <translation>표시 처리 완료</translation>
    </message>
    <message>
        <source>Please mark foreground objects.</source>
        <translation>전경 개체를 표시하십시오.</translation>
    </message>
    <message>
        <source>Please mark background regions.</source>
        <translation>배경 영역을 표시하십시오.</translation>
    </message>
    <message>
        <source>Alpha Extracting ..</source>
        <translation>알파 추출 중 ..</translation>
    </message>
    <message>
        <source>Alpha Extract done ..</source>
        <translation>알파 추출 완료 ..</translation>
    </message>
    <message>
        <source>Refining Edges ..</source>
        <translation>가장자리 다듬는 중 ..</translation>
    </message>
</context>
<context>
    <name>VexaToolLassoPolygon</name>
    <message>
        <source>Alt+Z to delete/recover latest point, double click to close the path</source>
        <translation>Alt+Z: 마지막 점 삭제/복원, 두 번 클릭하면 패스가 닫힙니다</translation>
    </message>
</context>
<context>
    <name>VexaToolLassoPolygonWidgetClass</name>
    <message>
        <source>Polygon Lasso Window</source>
        <translation>다각형 올가미</translation>
    </message>
    <message>
        <source>Control Points:</source>
        <translation>조절점:</translation>
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
        <source>Clear</source>
        <translation>지우기</translation>
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
        <translation>한계값:</translation>
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
        <translation>빠른 선택</translation>
    </message>
    <message>
        <source>Applying...</source>
        <translation>적용 중...</translation>
    </message>
</context>
<context>
    <name>VexaToolQuickSelectWidget</name>
    <message>
        <source>Quick Select Tool</source>
        <translation>빠른 선택 도구</translation>
    </message>
    <message>
        <source>Step1:Mark Fore/Background</source>
        <translation>1단계: 전경/배경 표시</translation>
    </message>
    <message>
        <source>Mark Foreground</source>
        <translation>전경 표시</translation>
    </message>
    <message>
        <source>Mark Background</source>
        <translation>배경 표시</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>미리 보기</translation>
    </message>
    <message>
        <source>Step2:Modify Boundary</source>
        <translation>2단계: 경계 수정</translation>
    </message>
    <message>
        <source>Mark Boundary</source>
        <translation>경계 표시</translation>
    </message>
    <message>
        <source>Clear Marks</source>
        <translation type="vanished">표시 지우기</translation>
    </message>
    <message>
        <source>Alpha Extract</source>
        <translation>알파 추출</translation>
    </message>
    <message>
        <source>Pen settings</source>
        <translation>펜 설정</translation>
    </message>
    <message>
        <source>Mark Radius: </source>
        <translation>표시 반경: </translation>
    </message>
    <message>
        <source>Sensitivity: </source>
        <translation>감도: </translation>
    </message>
    <message>
        <source>View Settings</source>
        <translation>보기 설정</translation>
    </message>
    <message>
        <source>Show User Marks</source>
        <translation>표시 보기</translation>
    </message>
    <message>
        <source>View Image</source>
        <translation>이미지 보기</translation>
    </message>
    <message>
        <source>View Matte</source>
        <translation>잘라낸 결과 보기</translation>
    </message>
    <message>
        <source>View Alpha</source>
        <translation>알파 보기</translation>
    </message>
    <message>
        <source>View Nodes</source>
        <translation>노드 보기</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>재설정</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>확인</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>취소</translation>
    </message>
    <message>
        <source>Initializing...</source>
        <translation>초기화 중...</translation>
    </message>
    <message>
        <source>Save Image</source>
        <translation>이미지 저장</translation>
    </message>
    <message>
        <source>Image Files (*.bmp *.gif *.jpg *.jpeg *.png)</source>
        <translation>이미지 파일 (*.bmp *.gif *.jpg *.jpeg *.png)</translation>
    </message>
    <message>
        <source>The document could not be rendered: there is nothing to select from.</source>
        <translation>문서를 렌더링할 수 없습니다. 선택할 대상이 없습니다.</translation>
    </message>
    <message>
        <source>Refine Edges</source>
        <translation>가장자리 다듬기</translation>
    </message>
    <message>
        <source>Paint foreground marks (F)</source>
        <translation>전경 표시 칠하기 (F)</translation>
    </message>
    <message>
        <source>Paint background marks (B)</source>
        <translation>배경 표시 칠하기 (B)</translation>
    </message>
    <message>
        <source>Paint the boundary band by hand (M)</source>
        <translation>경계 띠를 직접 칠하기 (M)</translation>
    </message>
    <message>
        <source>Erase the marks you paint over (E)</source>
        <translation>칠하는 곳의 표시 지우기 (E)</translation>
    </message>
    <message>
        <source>Cut the object out along the marks (P)</source>
        <translation>표시에 따라 개체 잘라내기 (P)</translation>
    </message>
    <message>
        <source>Turn the boundary band into soft edges (A)</source>
        <translation>경계 띠를 부드러운 가장자리로 만들기 (A)</translation>
    </message>
    <message>
        <source>Erase Marks</source>
        <translation>표시 지우개</translation>
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
        <translation>폭:</translation>
    </message>
    <message>
        <source>H:</source>
        <translation>높이:</translation>
    </message>
    <message>
        <source>Ok</source>
        <translation>확인</translation>
    </message>
</context>
<context>
    <name>VexaToolSelectionColorRangeWidgetClass</name>
    <message>
        <source>Color Range</source>
        <translation>색상 범위</translation>
    </message>
    <message>
        <source>Select Color</source>
        <translation>색상 선택</translation>
    </message>
    <message>
        <source>From:</source>
        <translation>소스:</translation>
    </message>
    <message>
        <source>Color Picker</source>
        <translation>스포이드</translation>
    </message>
    <message>
        <source>Mode:</source>
        <translation>모드:</translation>
    </message>
    <message>
        <source>Tolerance:</source>
        <translation>허용치:</translation>
    </message>
    <message>
        <source>Quick View:</source>
        <translation>미리 보기:</translation>
    </message>
    <message>
        <source>Selection</source>
        <translation>선택 영역</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>이미지</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>확인</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>취소</translation>
    </message>
</context>
<context>
    <name>VexaToolSelectionWidget</name>
    <message>
        <source>Drag with the right mouse button to subtract in any mode</source>
        <translation>어느 모드에서든 마우스 오른쪽 버튼으로 드래그하면 빼기가 됩니다</translation>
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
        <translation>새 선택 영역</translation>
    </message>
    <message>
        <source>selection</source>
        <translatorcomment>notr: style-sheet hook (dynamic property class) of the mode buttons</translatorcomment>
        <translation>selection</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>선택 영역에 추가</translation>
    </message>
    <message>
        <source>Substract</source>
        <translation>선택 영역에서 빼기</translation>
    </message>
    <message>
        <source>Intersect</source>
        <translation>선택 영역과 교차</translation>
    </message>
    <message>
        <source>Feather:</source>
        <translation>페더:</translation>
    </message>
    <message>
        <source>px</source>
        <translation>픽셀</translation>
    </message>
</context>
</TS>
