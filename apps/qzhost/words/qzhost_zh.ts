<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>qzhost</name>
    <message>
        <source> dots an inch</source>
        <translation> 点/英寸</translation>
    </message>
    <message>
        <source>%1 cannot be written.</source>
        <translation>无法写入 %1。</translation>
    </message>
    <message>
        <source>%1 drawings have changes that are not saved:
%2</source>
        <translation>%1 个图形有未保存的修改：
%2</translation>
    </message>
    <message>
        <source>%1 has changes that are not saved.</source>
        <translation>%1 有未保存的修改。</translation>
    </message>
    <message>
        <source>%1 off</source>
        <translation>%1 关</translation>
    </message>
    <message>
        <source>%1 on</source>
        <translation>%1 开</translation>
    </message>
    <message>
        <source>%1 tools, %2 failed; files in %3. %4</source>
        <translation>%1 把刀具，%2 把失败；文件在 %3。%4</translation>
    </message>
    <message>
        <source>%1 vertices</source>
        <translation>%1 个顶点</translation>
    </message>
    <message>
        <source>%1: a page is written as .pdf, .svg or .png</source>
        <translation>%1：页面只能写为 .pdf、.svg 或 .png</translation>
    </message>
    <message>
        <source>%1: a solid is saved as .stp, .sat, .stl or .png.</source>
        <translation>%1：实体只能保存为 .stp、.sat、.stl 或 .png。</translation>
    </message>
    <message>
        <source>&amp;Drafting</source>
        <translation>草图设置(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Draw</source>
        <translation>绘图(&amp;D)</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>编辑(&amp;E)</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>文件(&amp;F)</translation>
    </message>
    <message>
        <source>&amp;Inquiry</source>
        <translation>查询(&amp;I)</translation>
    </message>
    <message>
        <source>&amp;Modify</source>
        <translation>修改(&amp;M)</translation>
    </message>
    <message>
        <source>&amp;Tools</source>
        <translation>工具(&amp;T)</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>视图(&amp;V)</translation>
    </message>
    <message>
        <source>(current)</source>
        <translation>（当前）</translation>
    </message>
    <message>
        <source>*varies*</source>
        <translation>*多种*</translation>
    </message>
    <message>
        <source>, y of the centre line</source>
        <translation>，取中心线的 y</translation>
    </message>
    <message>
        <source>Answer, or Esc</source>
        <translation>输入回答，或按 Esc</translation>
    </message>
    <message>
        <source>Arc</source>
        <translation>圆弧</translation>
    </message>
    <message>
        <source>Area</source>
        <translation>面积</translation>
    </message>
    <message>
        <source>As the system</source>
        <translation>跟随系统</translation>
    </message>
    <message>
        <source>At this scale not all of it is on the paper.</source>
        <translation>按此比例，图纸放不下全部内容。</translation>
    </message>
    <message>
        <source>Axis</source>
        <translation>轴线</translation>
    </message>
    <message>
        <source>Beyond</source>
        <translation>超出</translation>
    </message>
    <message>
        <source>Black and white</source>
        <translation>黑白</translation>
    </message>
    <message>
        <source>Border</source>
        <translation>图框</translation>
    </message>
    <message>
        <source>Buttons</source>
        <translation>工具栏</translation>
    </message>
    <message>
        <source>By steps: %1</source>
        <translation>逐步算法：%1</translation>
    </message>
    <message>
        <source>Center</source>
        <translation>圆心</translation>
    </message>
    <message>
        <source>Centre</source>
        <translation>圆心</translation>
    </message>
    <message>
        <source>Centre line</source>
        <translation>中心线</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Closed</source>
        <translation>闭合</translation>
    </message>
    <message>
        <source>Color</source>
        <translation>颜色</translation>
    </message>
    <message>
        <source>Color number</source>
        <translation>颜色号</translation>
    </message>
    <message>
        <source>Colors</source>
        <translation>配色</translation>
    </message>
    <message>
        <source>Command line</source>
        <translation>命令行</translation>
    </message>
    <message>
        <source>Commands</source>
        <translation>命令列表</translation>
    </message>
    <message>
        <source>Compare with the exact envelope</source>
        <translation>与精确包络线比较</translation>
    </message>
    <message>
        <source>Compute an envelope, or click a tool in the list of tools.</source>
        <translation>请先计算包络线，或在刀具列表中单击一把刀具。</translation>
    </message>
    <message>
        <source>Compute and export tools...</source>
        <translation>计算并导出刀具...</translation>
    </message>
    <message>
        <source>Compute and export...</source>
        <translation>计算并导出...</translation>
    </message>
    <message>
        <source>Computing tools...</source>
        <translation>正在计算刀具...</translation>
    </message>
    <message>
        <source>Corner</source>
        <translation>轴测</translation>
    </message>
    <message>
        <source>Crossing</source>
        <translation>自交</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>深色</translation>
    </message>
    <message>
        <source>Default</source>
        <translation>默认</translation>
    </message>
    <message>
        <source>Different kinds</source>
        <translation>不同类型</translation>
    </message>
    <message>
        <source>Distance</source>
        <translation>距离</translation>
    </message>
    <message>
        <source>Drawings (*.dxf *.dwg);;All files (*)</source>
        <translation>图形 (*.dxf *.dwg);;所有文件 (*)</translation>
    </message>
    <message>
        <source>Drawings (*.dxf);;All files (*)</source>
        <translation>图形 (*.dxf);;所有文件 (*)</translation>
    </message>
    <message>
        <source>End</source>
        <translation>端面</translation>
    </message>
    <message>
        <source>End angle</source>
        <translation>终止角</translation>
    </message>
    <message>
        <source>Endpoint</source>
        <translation>端点</translation>
    </message>
    <message>
        <source>Envelope</source>
        <translation>包络线</translation>
    </message>
    <message>
        <source>Envelope %1</source>
        <translation>包络线 %1</translation>
    </message>
    <message>
        <source>Envelopes, many</source>
        <translation>批量包络线</translation>
    </message>
    <message>
        <source>Erase</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>Everything</source>
        <translation>全部</translation>
    </message>
    <message>
        <source>Exact</source>
        <translation>精确</translation>
    </message>
    <message>
        <source>Exact: %1</source>
        <translation>精确算法：%1</translation>
    </message>
    <message>
        <source>Exact: there is none</source>
        <translation>精确算法：无结果</translation>
    </message>
    <message>
        <source>Explode</source>
        <translation>分解</translation>
    </message>
    <message>
        <source>Export page</source>
        <translation>导出页面</translation>
    </message>
    <message>
        <source>Export page...</source>
        <translation>导出页面...</translation>
    </message>
    <message>
        <source>Files</source>
        <translation>文件</translation>
    </message>
    <message>
        <source>Filter by name</source>
        <translation>按名称筛选</translation>
    </message>
    <message>
        <source>Findings</source>
        <translation>检查结果</translation>
    </message>
    <message>
        <source>Fit</source>
        <translation>布满</translation>
    </message>
    <message>
        <source>Folder for the solids</source>
        <translation>实体文件的文件夹</translation>
    </message>
    <message>
        <source>Front</source>
        <translation>正面</translation>
    </message>
    <message>
        <source>Frozen</source>
        <translation>冻结</translation>
    </message>
    <message>
        <source>Gap</source>
        <translation>间隙</translation>
    </message>
    <message>
        <source>Grid</source>
        <translation>栅格</translation>
    </message>
    <message>
        <source>Halves</source>
        <translation>上下半</translation>
    </message>
    <message>
        <source>Height</source>
        <translation>高度</translation>
    </message>
    <message>
        <source>Intersection</source>
        <translation>交点</translation>
    </message>
    <message>
        <source>Kind</source>
        <translation>类别</translation>
    </message>
    <message>
        <source>Landscape</source>
        <translation>横向</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>语言</translation>
    </message>
    <message>
        <source>Layer</source>
        <translation>图层</translation>
    </message>
    <message>
        <source>Layers</source>
        <translation>图层</translation>
    </message>
    <message>
        <source>Left out</source>
        <translation>未参与</translation>
    </message>
    <message>
        <source>Length</source>
        <translation>长度</translation>
    </message>
    <message>
        <source>Length %1   ⌀ %2   Volume %3   Surface %4</source>
        <translation>长 %1   ⌀ %2   体积 %3   表面积 %4</translation>
    </message>
    <message>
        <source>Length %1, diameter %2, %3 vertices. %4</source>
        <translation>长 %1，直径 %2，%3 个顶点。%4</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>浅色</translation>
    </message>
    <message>
        <source>Line</source>
        <translation>直线</translation>
    </message>
    <message>
        <source>Linetype</source>
        <translation>线型</translation>
    </message>
    <message>
        <source>Linetype scale</source>
        <translation>线型比例</translation>
    </message>
    <message>
        <source>Lineweight</source>
        <translation>线宽</translation>
    </message>
    <message>
        <source>List</source>
        <translation>列表</translation>
    </message>
    <message>
        <source>List tools</source>
        <translation>列出刀具</translation>
    </message>
    <message>
        <source>Live preview</source>
        <translation>实时预览</translation>
    </message>
    <message>
        <source>Locked</source>
        <translation>锁定</translation>
    </message>
    <message>
        <source>Midpoint</source>
        <translation>中点</translation>
    </message>
    <message>
        <source>Mirror</source>
        <translation>镜像</translation>
    </message>
    <message>
        <source>Move</source>
        <translation>移动</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>Nearest</source>
        <translation>最近点</translation>
    </message>
    <message>
        <source>New</source>
        <translation>新建</translation>
    </message>
    <message>
        <source>No automatic copy: %1</source>
        <translation>没有自动备份：%1</translation>
    </message>
    <message>
        <source>No envelope in the drawing yet.</source>
        <translation>图形中还没有包络线。</translation>
    </message>
    <message>
        <source>No envelope: %1</source>
        <translation>没有包络线：%1</translation>
    </message>
    <message>
        <source>No solid: %1</source>
        <translation>没有实体：%1</translation>
    </message>
    <message>
        <source>Node</source>
        <translation>节点</translation>
    </message>
    <message>
        <source>Note</source>
        <translation>说明</translation>
    </message>
    <message>
        <source>Nothing computed yet.</source>
        <translation>尚未计算。</translation>
    </message>
    <message>
        <source>Nothing is picked.</source>
        <translation>未选择对象。</translation>
    </message>
    <message>
        <source>Object snap</source>
        <translation>对象捕捉</translation>
    </message>
    <message>
        <source>On</source>
        <translation>开</translation>
    </message>
    <message>
        <source>Open drawing</source>
        <translation>打开图形</translation>
    </message>
    <message>
        <source>Open recent</source>
        <translation>最近打开</translation>
    </message>
    <message>
        <source>Open...</source>
        <translation>打开...</translation>
    </message>
    <message>
        <source>Ortho</source>
        <translation>正交</translation>
    </message>
    <message>
        <source>Other...</source>
        <translation>其他...</translation>
    </message>
    <message>
        <source>Outline</source>
        <translation>轮廓</translation>
    </message>
    <message>
        <source>Page of findings</source>
        <translation>检查结果页面</translation>
    </message>
    <message>
        <source>Page of findings...</source>
        <translation>检查结果页面...</translation>
    </message>
    <message>
        <source>Paper</source>
        <translation>图纸</translation>
    </message>
    <message>
        <source>Part</source>
        <translation>范围</translation>
    </message>
    <message>
        <source>Parts</source>
        <translation>切削部分</translation>
    </message>
    <message>
        <source>Perpendicular</source>
        <translation>垂足</translation>
    </message>
    <message>
        <source>Pictures</source>
        <translation>图片</translation>
    </message>
    <message>
        <source>Point</source>
        <translation>点坐标</translation>
    </message>
    <message>
        <source>Polar tracking</source>
        <translation>极轴追踪</translation>
    </message>
    <message>
        <source>Polyline</source>
        <translation>多段线</translation>
    </message>
    <message>
        <source>Portrait</source>
        <translation>纵向</translation>
    </message>
    <message>
        <source>Position</source>
        <translation>位置</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>预览</translation>
    </message>
    <message>
        <source>Print or export</source>
        <translation>打印或导出</translation>
    </message>
    <message>
        <source>Print...</source>
        <translation>打印...</translation>
    </message>
    <message>
        <source>Properties</source>
        <translation>特性</translation>
    </message>
    <message>
        <source>Property</source>
        <translation>特性</translation>
    </message>
    <message>
        <source>Quadrant</source>
        <translation>象限点</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>退出</translation>
    </message>
    <message>
        <source>Radius</source>
        <translation>半径</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>重做</translation>
    </message>
    <message>
        <source>Rotate</source>
        <translation>旋转</translation>
    </message>
    <message>
        <source>Rotation</source>
        <translation>旋转角</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Save as...</source>
        <translation>另存为...</translation>
    </message>
    <message>
        <source>Save drawing</source>
        <translation>保存图形</translation>
    </message>
    <message>
        <source>Save solid</source>
        <translation>保存实体</translation>
    </message>
    <message>
        <source>Save...</source>
        <translation>保存...</translation>
    </message>
    <message>
        <source>Saved %1</source>
        <translation>已保存 %1</translation>
    </message>
    <message>
        <source>Scale</source>
        <translation>比例</translation>
    </message>
    <message>
        <source>Scale %1:1</source>
        <translation>比例 %1:1</translation>
    </message>
    <message>
        <source>Section</source>
        <translation>剖切</translation>
    </message>
    <message>
        <source>Select all</source>
        <translation>全部选择</translation>
    </message>
    <message>
        <source>Snap to grid</source>
        <translation>捕捉栅格</translation>
    </message>
    <message>
        <source>Solid</source>
        <translation>实体</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>起点</translation>
    </message>
    <message>
        <source>Start angle</source>
        <translation>起始角</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>状态</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>Task</source>
        <translation>任务</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>文字</translation>
    </message>
    <message>
        <source>The language changes at the next start.</source>
        <translation>语言将在下次启动时更改。</translation>
    </message>
    <message>
        <source>The program ended without saving these drawings:
%1
Open their automatic copies?</source>
        <translation>程序结束时未保存以下图形：
%1
要打开它们的自动备份吗？</translation>
    </message>
    <message>
        <source>There is no solid to save.</source>
        <translation>没有可保存的实体。</translation>
    </message>
    <message>
        <source>There is nothing to print.</source>
        <translation>没有可打印的内容。</translation>
    </message>
    <message>
        <source>This display shows no solids: it has no OpenGL.</source>
        <translation>此显示器没有 OpenGL，无法显示实体。</translation>
    </message>
    <message>
        <source>Tool</source>
        <translation>刀具</translation>
    </message>
    <message>
        <source>Tools</source>
        <translation>刀具</translation>
    </message>
    <message>
        <source>Type a command</source>
        <translation>输入命令</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>放弃</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>值</translation>
    </message>
    <message>
        <source>Verdict</source>
        <translation>结论</translation>
    </message>
    <message>
        <source>Vertices</source>
        <translation>顶点数</translation>
    </message>
    <message>
        <source>What</source>
        <translation>内容</translation>
    </message>
    <message>
        <source>What the window shows</source>
        <translation>窗口所示</translation>
    </message>
    <message>
        <source>Window</source>
        <translation>窗口</translation>
    </message>
    <message>
        <source>Zoom all</source>
        <translation>全部显示</translation>
    </message>
    <message>
        <source>Zoom in</source>
        <translation>放大</translation>
    </message>
    <message>
        <source>Zoom out</source>
        <translation>缩小</translation>
    </message>
    <message>
        <source>computed</source>
        <translation>已计算</translation>
    </message>
    <message>
        <source>duplicate</source>
        <translation>重复</translation>
    </message>
    <message>
        <source>explode</source>
        <translation>无法分解</translation>
    </message>
    <message>
        <source>exported</source>
        <translation>已导出</translation>
    </message>
    <message>
        <source>failed</source>
        <translation>失败</translation>
    </message>
    <message>
        <source>greatest difference</source>
        <translation>最大差异</translation>
    </message>
    <message>
        <source>layer</source>
        <translation>尺寸线图层</translation>
    </message>
    <message>
        <source>length %1, diameter %2, %3 vertices</source>
        <translation>长 %1，直径 %2，%3 个顶点</translation>
    </message>
    <message>
        <source>linetype</source>
        <translation>线型</translation>
    </message>
    <message>
        <source>locked</source>
        <translation>锁定图层</translation>
    </message>
    <message>
        <source>not finite</source>
        <translation>坐标无效</translation>
    </message>
    <message>
        <source>not started</source>
        <translation>未开始</translation>
    </message>
    <message>
        <source>nothing of what was picked is seen from this half</source>
        <translation>从所选半边看不到任何所选对象</translation>
    </message>
    <message>
        <source>the page cannot be written</source>
        <translation>无法写入页面</translation>
    </message>
    <message>
        <source>the picture cannot be written</source>
        <translation>无法写入图片</translation>
    </message>
    <message>
        <source>the picture would be too large; ask for fewer dots an inch</source>
        <translation>图片过大，请降低分辨率</translation>
    </message>
    <message>
        <source>there is no place for automatic copies: %1</source>
        <translation>没有存放自动备份的位置：%1</translation>
    </message>
    <message>
        <source>there is not enough memory for the picture</source>
        <translation>内存不足，无法生成图片</translation>
    </message>
    <message>
        <source>type</source>
        <translation>非轮廓类型</translation>
    </message>
    <message>
        <source>unopenable</source>
        <translation>无法打开</translation>
    </message>
</context>
<context>
    <name>host</name>
    <message>
        <source>%1 changed.</source>
        <translation>已更改 %1 个。</translation>
    </message>
    <message>
        <source>%1 constraint(s) removed.</source>
        <translation>已删除 %1 个约束。</translation>
    </message>
    <message>
        <source>%1 could not be changed.</source>
        <translation>%1 个无法更改。</translation>
    </message>
    <message>
        <source>%1 could not be mirrored.</source>
        <translation>%1 个无法镜像。</translation>
    </message>
    <message>
        <source>%1 erased.</source>
        <translation>已删除 %1 个。</translation>
    </message>
    <message>
        <source>%1 exploded, %2 could not be exploded.</source>
        <translation>已分解 %1 个，%2 个无法分解。</translation>
    </message>
    <message>
        <source>%1 found</source>
        <translation>找到 %1 个</translation>
    </message>
    <message>
        <source>%1 found (%2 duplicate)</source>
        <translation>找到 %1 个（%2 个重复）</translation>
    </message>
    <message>
        <source>%1 found (%2 duplicate), %3 total</source>
        <translation>找到 %1 个（%2 个重复），总计 %3 个</translation>
    </message>
    <message>
        <source>%1 found, %2 removed, %3 total</source>
        <translation>找到 %1 个，删除 %2 个，总计 %3 个</translation>
    </message>
    <message>
        <source>%1 found, %2 total</source>
        <translation>找到 %1 个，总计 %2 个</translation>
    </message>
    <message>
        <source>%1 found.</source>
        <translation>找到 %1 个。</translation>
    </message>
    <message>
        <source>%1 is open already.</source>
        <translation>%1 已经打开。</translation>
    </message>
    <message>
        <source>%1 layer(s) changed.</source>
        <translation>已更改 %1 个图层。</translation>
    </message>
    <message>
        <source>%1 layer(s) could not be; the current layer is not frozen.</source>
        <translation>%1 个图层未更改；当前图层不能冻结。</translation>
    </message>
    <message>
        <source>%1 layer(s) frozen.</source>
        <translation>已冻结 %1 个图层。</translation>
    </message>
    <message>
        <source>%1 layer(s) locked.</source>
        <translation>已锁定 %1 个图层。</translation>
    </message>
    <message>
        <source>%1 layer(s) thawed.</source>
        <translation>已解冻 %1 个图层。</translation>
    </message>
    <message>
        <source>%1 layer(s) turned off.</source>
        <translation>已关闭 %1 个图层。</translation>
    </message>
    <message>
        <source>%1 layer(s) turned on.</source>
        <translation>已打开 %1 个图层。</translation>
    </message>
    <message>
        <source>%1 layer(s) unlocked.</source>
        <translation>已解锁 %1 个图层。</translation>
    </message>
    <message>
        <source>%1 left out: locked or gone.</source>
        <translation>%1 个未包括：已锁定或已删除。</translation>
    </message>
    <message>
        <source>%1 not changed: %2</source>
        <translation>%1 个未更改：%2</translation>
    </message>
    <message>
        <source>%1 redone.</source>
        <translation>已重做 %1。</translation>
    </message>
    <message>
        <source>%1 undone.</source>
        <translation>已放弃 %1。</translation>
    </message>
    <message>
        <source>A scale factor must be greater than zero.</source>
        <translation>比例因子必须大于零。</translation>
    </message>
    <message>
        <source>Delta X = %1,  Delta Y = %2,  Delta Z = %3</source>
        <translation>X 增量 = %1，Y 增量 = %2，Z 增量 = %3</translation>
    </message>
    <message>
        <source>Distance = %1,  Angle in XY Plane = %2</source>
        <translation>距离 = %1，XY 平面中的倾角 = %2</translation>
    </message>
    <message>
        <source>Enter a scale factor (n or nX): </source>
        <translation>输入比例因子 (n 或 nX): </translation>
    </message>
    <message>
        <source>Enter an option %1: </source>
        <translation>输入选项 %1: </translation>
    </message>
    <message>
        <source>Enter color number [1-255]: </source>
        <translation>输入颜色号 [1-255]: </translation>
    </message>
    <message>
        <source>Enter height of the view: </source>
        <translation>输入视图高度: </translation>
    </message>
    <message>
        <source>Enter linetype name: </source>
        <translation>输入线型名: </translation>
    </message>
    <message>
        <source>Enter lineweight in mm [0.00-2.11]: </source>
        <translation>输入线宽（毫米）[0.00-2.11]: </translation>
    </message>
    <message>
        <source>Enter module file to load: </source>
        <translation>输入要加载的模块文件: </translation>
    </message>
    <message>
        <source>Enter name list of layer(s) to be %1: </source>
        <translation>输入图层名列表（%1）: </translation>
    </message>
    <message>
        <source>Enter name list of layer(s): </source>
        <translation>输入图层名列表: </translation>
    </message>
    <message>
        <source>Enter name of drawing to open: </source>
        <translation>输入要打开的图形名: </translation>
    </message>
    <message>
        <source>Enter name of layer to make current: </source>
        <translation>输入要置为当前的图层名: </translation>
    </message>
    <message>
        <source>Enter name of new layer: </source>
        <translation>输入新图层名: </translation>
    </message>
    <message>
        <source>Enter new value: </source>
        <translation>输入新值: </translation>
    </message>
    <message>
        <source>Enter property to change %1: </source>
        <translation>输入要更改的特性 %1: </translation>
    </message>
    <message>
        <source>Enter the number of operations to undo &lt;1&gt;: </source>
        <translation>输入要放弃的操作数目 &lt;1&gt;: </translation>
    </message>
    <message>
        <source>Erase source objects? [Yes/No] &lt;No&gt;: </source>
        <translation>要删除源对象吗？[Yes/No] &lt;No&gt;: </translation>
    </message>
    <message>
        <source>Invalid option keyword: %1</source>
        <translation>无效的选项关键字：%1</translation>
    </message>
    <message>
        <source>Invalid point: %1</source>
        <translation>无效的点：%1</translation>
    </message>
    <message>
        <source>No layer that can be current: %1</source>
        <translation>不能置为当前的图层：%1</translation>
    </message>
    <message>
        <source>Not a name for a layer: %1</source>
        <translation>不是图层名：%1</translation>
    </message>
    <message>
        <source>Not a number of operations: %1</source>
        <translation>不是操作次数：%1</translation>
    </message>
    <message>
        <source>Not a point: %1; type x,y or @x,y or distance&lt;angle, or click.</source>
        <translation>不是点：%1；请输入 x,y、@x,y 或 距离&lt;角度，或单击。</translation>
    </message>
    <message>
        <source>Not a property: %1</source>
        <translation>不是特性：%1</translation>
    </message>
    <message>
        <source>Not a way to select: %1; pick, or type ALL, Previous, Last, Remove, Add or a point x,y.</source>
        <translation>不是选择方式：%1；请点选，或输入 ALL、Previous、Last、Remove、Add 或点 x,y。</translation>
    </message>
    <message>
        <source>Nothing to redo.</source>
        <translation>没有可重做的操作。</translation>
    </message>
    <message>
        <source>Nothing to undo.</source>
        <translation>没有可放弃的操作。</translation>
    </message>
    <message>
        <source>Out of range: %1</source>
        <translation>超出范围：%1</translation>
    </message>
    <message>
        <source>Remove objects:</source>
        <translation>删除对象:</translation>
    </message>
    <message>
        <source>Save drawing as: </source>
        <translation>图形另存为: </translation>
    </message>
    <message>
        <source>Saved %1</source>
        <translation>已保存 %1</translation>
    </message>
    <message>
        <source>Select objects:</source>
        <translation>选择对象:</translation>
    </message>
    <message>
        <source>Select objects: </source>
        <translation>选择对象: </translation>
    </message>
    <message>
        <source>Specify base point or displacement: </source>
        <translation>指定基点或位移: </translation>
    </message>
    <message>
        <source>Specify base point: </source>
        <translation>指定基点: </translation>
    </message>
    <message>
        <source>Specify center point of arc: </source>
        <translation>指定圆弧的圆心: </translation>
    </message>
    <message>
        <source>Specify center point: </source>
        <translation>指定中心点: </translation>
    </message>
    <message>
        <source>Specify corner of window, enter a scale factor (nX), or %1: </source>
        <translation>指定窗口角点，输入比例因子 (nX)，或 %1: </translation>
    </message>
    <message>
        <source>Specify end point of arc: </source>
        <translation>指定圆弧的端点: </translation>
    </message>
    <message>
        <source>Specify endpoint of arc or [Line/Close/Undo]: </source>
        <translation>指定圆弧的端点或 [Line/Close/Undo]: </translation>
    </message>
    <message>
        <source>Specify first corner: </source>
        <translation>指定第一个角点: </translation>
    </message>
    <message>
        <source>Specify first point of mirror line: </source>
        <translation>指定镜像线的第一点: </translation>
    </message>
    <message>
        <source>Specify first point: </source>
        <translation>指定第一点: </translation>
    </message>
    <message>
        <source>Specify grip: </source>
        <translation>指定夹点: </translation>
    </message>
    <message>
        <source>Specify next point or [Arc/Close/Undo]: </source>
        <translation>指定下一点或 [Arc/Close/Undo]: </translation>
    </message>
    <message>
        <source>Specify next point or [Close/Undo]: </source>
        <translation>指定下一点或 [Close/Undo]: </translation>
    </message>
    <message>
        <source>Specify next point or [Undo]: </source>
        <translation>指定下一点或 [Undo]: </translation>
    </message>
    <message>
        <source>Specify opposite corner: </source>
        <translation>指定对角点: </translation>
    </message>
    <message>
        <source>Specify point: </source>
        <translation>指定点: </translation>
    </message>
    <message>
        <source>Specify rotation angle in degrees: </source>
        <translation>指定旋转角度（度）: </translation>
    </message>
    <message>
        <source>Specify scale factor: </source>
        <translation>指定比例因子: </translation>
    </message>
    <message>
        <source>Specify second point of arc: </source>
        <translation>指定圆弧的第二点: </translation>
    </message>
    <message>
        <source>Specify second point of mirror line: </source>
        <translation>指定镜像线的第二点: </translation>
    </message>
    <message>
        <source>Specify second point or &lt;use first point as displacement&gt;: </source>
        <translation>指定第二点或 &lt;使用第一点作为位移&gt;: </translation>
    </message>
    <message>
        <source>Specify second point: </source>
        <translation>指定第二点: </translation>
    </message>
    <message>
        <source>Specify start point of arc or [Center]: </source>
        <translation>指定圆弧的起点或 [Center]: </translation>
    </message>
    <message>
        <source>Specify start point of arc: </source>
        <translation>指定圆弧的起点: </translation>
    </message>
    <message>
        <source>Specify start point: </source>
        <translation>指定起点: </translation>
    </message>
    <message>
        <source>Specify stretch point: </source>
        <translation>指定拉伸点: </translation>
    </message>
    <message>
        <source>The drawing is locked by another task; %1 was not run.</source>
        <translation>图形被其他任务占用；%1 未运行。</translation>
    </message>
    <message>
        <source>The start lies on the center.</source>
        <translation>起点与圆心重合。</translation>
    </message>
    <message>
        <source>The two points of the mirror line are one.</source>
        <translation>镜像线的两点重合。</translation>
    </message>
    <message>
        <source>There is no grip.</source>
        <translation>此处没有夹点。</translation>
    </message>
    <message>
        <source>There is no linetype %1 in the drawing.</source>
        <translation>图形中没有线型 %1。</translation>
    </message>
    <message>
        <source>Unknown command "%1". Press F1 or type HELP for a list.</source>
        <translation>未知命令“%1”；按 F1 或输入 HELP 查看列表。</translation>
    </message>
</context>
</TS>
